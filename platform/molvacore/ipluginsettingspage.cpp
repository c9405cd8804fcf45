#include <molvacore/ipluginsettingspage.h>

// Defined here so that every module shares one table of virtual functions.
IPluginSettingsPage::~IPluginSettingsPage() = default;
