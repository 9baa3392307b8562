#pragma once

#include "core/packages/PackageDatabase.h"

/// The database of rpm(8) since 4.16: a file of SQLite with the tables "Packages(hnum, blob)", a
/// header per package, and "Basenames(key, hnum, idx)", which lists for each file name the packages
/// with such a file and the number of that file in the header of the package. The older forms
/// (Berkeley DB, ndb) are recognised but not read.
namespace tidemark::RpmDatabase {

PackageDatabaseForm form();

/// The path of the database; absent where there is none of this form.
std::optional<std::string> file(const MachineFiles& machine);

} // namespace tidemark::RpmDatabase
