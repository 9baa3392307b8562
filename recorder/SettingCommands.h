#pragma once

#include "app/preferences/Preferences.h"
#include "app/preferences/SettingSource.h"

#include <filesystem>
#include <string>
#include <vector>

/// The settings that are the user's to see and to set.
namespace tidemark::settingCommands {

/// One line a setting, or all as JSON. A setting whose source is not among `sources` is marked with
/// the reason. The configuration files in `suggestions`, which the user may want to observe, and
/// what is wrong with the stored settings follow at the end.
std::string list(const Preferences& preferences, const SettingSources& sources,
                 const std::vector<std::filesystem::path>& suggestions, bool asJson);
/// The same of one setting, its value in the first line. Throws `Error` when there is no such
/// setting.
std::string get(const Preferences& preferences, const SettingSources& sources,
                const std::string& key, bool asJson);
/// Checks `text` against the table of settings and stores it. Throws `Error` when it does not fit
/// or can't be stored; then the setting is as before.
void set(Preferences& preferences, const std::string& key, const std::string& text);

} // namespace tidemark::settingCommands
