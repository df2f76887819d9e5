#include "base/settingsevents.h"

SettingsEvents *SettingsEvents::instance()
{
    static SettingsEvents events;
    return &events;
}
