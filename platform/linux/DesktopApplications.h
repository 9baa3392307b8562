#pragma once

#include "app/ports/ApplicationSource.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// Finds applications by the identifiers of their desktop entries (XDG Desktop Entry 1.5). Blocks;
/// any thread.
namespace tidemark::desktopApplications {

/// The folders with desktop entries, the one with precedence first; also those of Flatpak and snap,
/// which the environment variables of a service often do not name.
std::vector<std::filesystem::path> folders();

/// The application of the first identifier that has a desktop entry in one of the folders. Absent
/// when no identifier has one, and when that entry can't be used: it is damaged, hidden, not
/// displayed in menus, or runs in a terminal.
std::optional<ApplicationSource::Application>
find(const std::vector<std::string>& identifiers,
     const std::vector<std::filesystem::path>& folders);

} // namespace tidemark::desktopApplications
