#pragma once

#include "core/packages/PackageDatabase.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>

/// The database of pacman(8): a folder "local/NAME-VERSION" per package with the files "desc" and
/// "files". In these, a line such as "%VERSION%" begins a field, whose lines follow until an empty
/// line. The file "ALPM_DB_VERSION" has the version of the format. The file "db.lck" beside "local"
/// exists while pacman is running.
namespace tidemark::PacmanDatabase {

PackageDatabaseForm form();

/// The names of the packages that were installed because others need them.
std::set<std::string, std::less<>> dependencies(const MachineFiles& machine);

/// The lines of a field with their line breaks; absent when there is no such field.
std::optional<std::string_view> field(std::string_view text, std::string_view name);

} // namespace tidemark::PacmanDatabase
