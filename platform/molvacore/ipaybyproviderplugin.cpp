#include <molvacore/ipaybyproviderplugin.h>

// Defined here so that every module shares one table of virtual functions.
IPayByProviderPlugin::~IPayByProviderPlugin() = default;
