#pragma once

#include <molvacore/molvacore_global.h>

/// A plugin's page in the host's settings window; nothing but its owner deletes it.
class MOLVACORE_EXPORT IPluginSettingsPage
{
public:
    virtual ~IPluginSettingsPage();
};
