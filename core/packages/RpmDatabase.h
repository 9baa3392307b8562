#pragma once

#include "core/packages/PackageDatabase.h"

/// The database of rpm(8) since 4.16: a file of SQLite with the tables "Packages(hnum, blob)", a
/// header per package, and "Basenames(key, hnum, idx)", the names of all files with the package
/// and the number in it. The older forms (Berkeley DB, ndb) are recognised but
/// not read.
namespace tidemark::RpmDatabase {

PackageDatabaseForm form();

/// Where the database lies; absent where there is none of this form.
std::optional<std::string> file(const MachineFiles& machine);

} // namespace tidemark::RpmDatabase
