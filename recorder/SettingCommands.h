#pragma once

#include "app/preferences/Preferences.h"
#include "app/preferences/SettingSource.h"

#include <filesystem>
#include <string>
#include <vector>

/// Prints and changes the settings of the user.
namespace tidemark::settingCommands {

/// One line per setting, or all as JSON. A setting whose source is not in `sources` is marked
/// with the reason. The configuration files in `suggestions`, which the user may want to observe,
/// and a problem with the stored settings are appended.
std::string list(const Preferences& preferences, const SettingSources& sources,
                 const std::vector<std::filesystem::path>& suggestions, bool asJson);
/// The value of one setting in the first line, then why it is not available and a problem with the
/// stored settings, if there are; or all as JSON. Throws `Error` when there is no such setting.
std::string get(const Preferences& preferences, const SettingSources& sources,
                const std::string& key, bool asJson);
/// Checks `text` by the table of settings and stores it. Throws `Error` when it is invalid or can't
/// be stored; the setting is unchanged then.
void set(Preferences& preferences, const std::string& key, const std::string& text);

} // namespace tidemark::settingCommands
