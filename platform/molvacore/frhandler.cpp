#include <molvacore/frhandler.h>

FrHandler::FrHandler(QObject *parent) : QObject(parent) {}

FrHandler::~FrHandler() = default;
