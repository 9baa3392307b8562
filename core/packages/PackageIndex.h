#pragma once

#include "core/packages/PackageDatabase.h"

#include <mutex>

namespace tidemark {

/// Which package owns a file, by the databases of a machine's package managers, read as files: no
/// tool is run. The lists are long and change rarely, so keep this object from one capture to the
/// next: a database is read again only after a change.
///
/// Any thread may call `read`; it waits until the previous reading is destroyed.
class PackageIndex {
public:
    class Reading;

    /// Checks which databases have changed, for lookups of files below `folders` (paths without
    /// links). After a stop request, a lookup that first has to load a database may give up before
    /// its end and report the owner as unknown; after the next `read`, the database is loaded
    /// again.
    Reading read(const MachineFiles& machine, const OwnedFolders& folders,
                 const std::stop_token& stop = {});

private:
    struct Kept {
        PackageDatabaseForm form;
        DatabaseState state;
        /// Read in that state; null until the first lookup.
        std::unique_ptr<PackageDatabase> database;
    };

    void refresh(const MachineFiles& newMachine, const OwnedFolders& newFolders,
                 const std::stop_token& newStop);
    Ownership owner(const std::string& path);
    void open(Kept& kept) const;
    void rest();

    std::mutex mutex;
    MachineFiles machine;
    OwnedFolders folders;
    std::vector<Kept> databases;
    std::stop_token stop;
};

/// Lookups in the databases. The destructor closes their files; what was read from them stays in
/// the index.
class PackageIndex::Reading {
public:
    ~Reading() { index.rest(); }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

    /// The owner of the file at a path without links; none for a file outside of the folders, or in
    /// a folder in which packages install nothing, such as "/home".
    Ownership owner(const std::string& path) { return index.owner(path); }

private:
    friend PackageIndex;
    Reading(PackageIndex& parent, const MachineFiles& machine, const OwnedFolders& folders,
            const std::stop_token& stop)
        : index(parent), lock(parent.mutex) {
        index.refresh(machine, folders, stop);
    }

    PackageIndex& index;
    std::unique_lock<std::mutex> lock;
};

} // namespace tidemark
