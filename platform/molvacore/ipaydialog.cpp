#include <molvacore/ipaydialog.h>

// Defined here so that every module shares one table of virtual functions.
IPayDialog::~IPayDialog() = default;
