#pragma once

#include "core/base/MachineFiles.h"
#include "core/packages/PackageOwner.h"
#include "core/system/StorageFileMetadata.h"

#include <expected>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

namespace tidemark {

/// What a package manager recorded about its packages, at one point in time.
class PackageDatabase {
public:
    PackageDatabase() = default;
    virtual ~PackageDatabase() = default;
    PackageDatabase(const PackageDatabase&) = delete;
    PackageDatabase& operator=(const PackageDatabase&) = delete;

    /// The owner of the file at a path without links.
    virtual Ownership owner(const std::string& path) = 0;
    /// Closes open files; the next call of `owner` opens them again.
    virtual void rest() {}
};

/// The versions of the files that change with a database, or the `errno` for a file whose status
/// can't be read. As long as the state stays equal, the contents have not changed. Empty when the
/// machine has no such database.
using DatabaseState = std::vector<std::expected<FileVersion, int>>;

/// The state of these files; empty when none of them exists.
DatabaseState stateOf(const MachineFiles& machine, const std::vector<std::string>& paths);

/// Paths of the folders whose files are looked up. A database may leave out all other files.
using OwnedFolders = std::vector<std::string>;

/// One form of database, as the functions that read it. There is a source file for each form, with
/// a function `form` that returns this.
struct PackageDatabaseForm {
    DatabaseState (*state)(const MachineFiles&);
    /// After a stop request, the returned database may report every owner as unknown.
    std::unique_ptr<PackageDatabase> (*open)(const MachineFiles&, const OwnedFolders&,
                                             const std::stop_token&);
};

} // namespace tidemark
