#pragma once

#include "core/records/Snapshot.h"

#include <string>
#include <vector>

namespace tidemark::demo {

/// A computer that exists nowhere: what an observation of it finds, and the ways in which it
/// changes. Deterministic, but for the identifiers of the snapshots.
class MadeUpMachine {
public:
    MadeUpMachine();

    /// What a capture at `at` finds. `interval` is the number of seconds after which the next
    /// capture is due.
    Snapshot captured(Date at, std::optional<double> interval = {}) const;

    // Changes. Applications and folders are given by their names. updateApplication() and grow()
    // throw `std::invalid_argument` for an unknown one.

    void updateApplication(const std::string& name);
    void install(const std::string& name, const std::string& version);
    void remove(const std::string& name);
    void addService(const std::string& application, const std::string& name);
    /// A subfolder and with it its folder become larger or smaller.
    void grow(const std::string& folder, const std::string& child, std::int64_t bytes);
    void throwAway(std::int64_t items, std::int64_t bytes);
    void emptyTrash();
    void changeFreeSpace(std::int64_t bytes) { freeBytes += bytes; }
    void updateSystem(std::string version) { system = std::move(version); }

    std::size_t applicationCount() const { return applications.size(); }
    const std::string& applicationName(std::size_t index) const { return applications[index].name; }

private:
    struct Folder {
        std::string name;
        std::string path;
        SizeByName children;
        SizeByName files;
        /// A child whose size is not known.
        std::string unmeasured{};
    };

    Application& application(const std::string& name);
    FolderStorageReport report(const Folder& folder, Date at) const;

    std::vector<Application> applications;
    std::vector<BackgroundItem> services;
    std::vector<Folder> folders;
    std::int64_t trashItems = 212;
    std::int64_t trashBytes = 3'100'000'000;
    std::int64_t freeBytes = 188'000'000'000;
    std::string system = "Example Linux 12.7";
};

} // namespace tidemark::demo
