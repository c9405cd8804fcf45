#include <molvacore/ipayscontrollerwrapper.h>

// Defined here so that every module shares one table of virtual functions.
IPaysControllerWrapper::~IPaysControllerWrapper() = default;
