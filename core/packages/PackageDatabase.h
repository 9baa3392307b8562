#pragma once

#include "core/base/MachineFiles.h"
#include "core/packages/PackageOwner.h"
#include "core/system/StorageFileMetadata.h"

#include <expected>
#include <memory>
#include <string>
#include <vector>

namespace tidemark {

/// What a package manager recorded of its packages, as it was at one moment.
class PackageDatabase {
public:
    PackageDatabase() = default;
    virtual ~PackageDatabase() = default;
    PackageDatabase(const PackageDatabase&) = delete;
    PackageDatabase& operator=(const PackageDatabase&) = delete;

    /// The owner of the file at a path without links.
    virtual Ownership owner(const std::string& path) = 0;
    /// Closes what is open; a later question opens it again.
    virtual void rest() {}
};

/// One version of the files by which a database is known to have changed: as long as it is equal,
/// the answers are. A file that can't be looked at stands as its `errno`. Empty where a machine has
/// no such database.
using DatabaseState = std::vector<std::expected<FileVersion, int>>;

/// The state of these files; empty when there is none of them.
DatabaseState stateOf(const MachineFiles& machine, const std::vector<std::string>& paths);

/// The folders below which owners are asked for. A database needs to keep nothing of any other.
using OwnedFolders = std::vector<std::string>;

/// One form of database. There is a source file for each, with a function that returns its row.
struct PackageDatabaseForm {
    DatabaseState (*state)(const MachineFiles&);
    std::unique_ptr<PackageDatabase> (*open)(const MachineFiles&, const OwnedFolders&);
};

} // namespace tidemark
