#pragma once

#include "core/packages/PackageDatabase.h"

#include <map>
#include <string_view>

/// The database of dpkg(1): "status", a stanza per package, and "info/NAME[:ARCHITECTURE].list",
/// the paths of its files. "info/format" has the version of the format; the folder
/// "updates" holds the changes that are not in "status" yet.
namespace tidemark::DpkgDatabase {

PackageDatabaseForm form();

/// The packages of "status". The key is the name of the package's file in "info" without ".list".
/// The owner is absent for a package of which only configuration is left.
std::map<std::string, std::optional<PackageOwner>, std::less<>> packages(std::string_view status);

} // namespace tidemark::DpkgDatabase
