#pragma once

#include "app/preferences/Preferences.h"

#include <string>

/// The settings that are the user's to see and to set.
namespace tidemark::settingCommands {

/// One line a setting.
std::string list(const Preferences& preferences);
/// Throws `Error` when there is no such setting.
std::string get(const Preferences& preferences, const std::string& key);
/// Checks `text` against the table of settings and stores it. Throws `Error` when it does not fit
/// or can't be stored; then the setting is as before.
void set(Preferences& preferences, const std::string& key, const std::string& text);

} // namespace tidemark::settingCommands
