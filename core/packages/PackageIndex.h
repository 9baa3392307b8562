#pragma once

#include "core/packages/PackageDatabase.h"

#include <mutex>

namespace tidemark {

/// Which package owns a file, by the databases of a machine's package managers, read as files: no
/// tool is run. Their lists are long and change seldom, so this is kept from one capture to the
/// next by whoever takes captures, and a database is read anew only when it has changed.
///
/// Any thread may ask for a reading; readings take turns.
class PackageIndex {
public:
    class Reading;

    /// The owners of files below `folders` (paths without links) of a machine, as they are now.
    /// Waits while another reading lives.
    Reading read(const MachineFiles& machine, const OwnedFolders& folders);

private:
    struct Kept {
        PackageDatabaseForm form;
        DatabaseState state;
        /// As it was in that state; null until it is asked.
        std::unique_ptr<PackageDatabase> database;
    };

    void refresh(const MachineFiles& of, const OwnedFolders& asked);
    Ownership owner(const std::string& path);
    void open(Kept& kept) const;
    void rest();

    std::mutex mutex;
    MachineFiles machine;
    OwnedFolders folders;
    std::vector<Kept> databases;
};

/// The owners as they are while this lives. Nothing of a database stays open behind it.
class PackageIndex::Reading {
public:
    ~Reading() { index.rest(); }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

    /// The owner of the file at a path without links; none for what lies outside of the folders.
    Ownership owner(const std::string& path) { return index.owner(path); }

private:
    friend PackageIndex;
    Reading(PackageIndex& asked, const MachineFiles& machine, const OwnedFolders& folders)
        : index(asked), lock(asked.mutex) {
        index.refresh(machine, folders);
    }

    PackageIndex& index;
    std::unique_lock<std::mutex> lock;
};

} // namespace tidemark
