#pragma once

#include "app/preferences/Preferences.h"
#include "app/preferences/SettingSource.h"

namespace tidemark {

/// The input of a command that only reads the settings.
struct SettingsReading {
    const Preferences& preferences;
    /// In a running recorder, without the sources that it found missing.
    SettingSources sources;
};

} // namespace tidemark
