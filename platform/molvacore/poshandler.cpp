#include <molvacore/poshandler.h>

PosHandler::PosHandler(QObject *parent) : QObject(parent) {}

PosHandler::~PosHandler() = default;
