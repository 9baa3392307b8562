#pragma once

#include "core/base/KeyFile.h"
#include "core/base/MachineFiles.h"
#include "core/capture/FolderListing.h"
#include "core/capture/RootReading.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The contents of the unit folders of one manager, the system's or a user's (systemd.unit(5)).
/// Files define units, drop-ins change them, and links enable, mask and rename them; which of them
/// takes effect depends on all folders together. So all folders are read first, in one pass, and
/// units are looked up here afterwards without access to the disk.
struct UnitFolders {
    /// A file that defines a unit, or masks those of its name in less preferred folders.
    struct Fragment {
        /// Index of its folder, 0 being the most preferred one.
        std::size_t folder = 0;
        std::filesystem::path path;
        bool isMask = false;
        /// Absent for a mask and for a file that can't be read or is malformed.
        std::optional<KeyFile> content{};
    };
    /// A file "….conf" in a folder such as "ssh.service.d".
    struct DropIn {
        std::size_t folder = 0;
        std::string name;
        bool isMask = false;
        std::optional<KeyFile> content{};
        /// The text of a link that is not a mask, whose target is not read; empty for a file.
        std::string linkText{};
    };
    /// A link that enables a unit: one in a folder such as "multi-user.target.wants", or one by
    /// which an administrator or a user gives the unit a further name. Some units, such as display
    /// managers, are enabled by such a name alone.
    struct Enablement {
        std::filesystem::path path;
        /// True for a link in a folder of the distribution, not of an administrator or a user.
        bool isOfDistribution = false;
    };

    /// The fragments of each unit by its name, the one in the most preferred folder first.
    std::map<std::string, std::vector<Fragment>, std::less<>> fragments;
    /// The drop-ins by the name of their folder without ".d", the most preferred folder first.
    std::map<std::string, std::vector<DropIn>, std::less<>> dropIns;
    /// The links that enable each unit, by the name of the unit. A link that uses a further name of
    /// a unit is found by either name.
    std::map<std::string, std::vector<Enablement>, std::less<>> enablements;
    /// For each further name of a unit, the name of the file that the links of that name lead to in
    /// the end.
    std::map<std::string, std::string, std::less<>> aliases;
    /// Links to unit files in other folders. They are not followed.
    std::vector<std::filesystem::path> linkedUnits;
};

/// Whether a folder of units belongs to the distribution, by its path.
bool isUnitFolderOfDistribution(const std::filesystem::path& folder);

/// Reads the folders of one manager, each once.
class UnitFoldersReader {
public:
    /// All folders of the manager, the most preferred first, by canonical paths.
    UnitFoldersReader(const MachineFiles& files, std::vector<std::filesystem::path> folders)
        : machine(files), searchPath(std::move(folders)) {}

    /// Reads the folder at `index` of the search path. If it, or a folder in it, can't be read,
    /// calls `reading.fail()` and returns the path of that folder. The state of all units of this
    /// manager is unknown then, since the unread files may override any of them.
    std::optional<std::filesystem::path> read(std::size_t index, RootReading& reading);

    UnitFolders finish();

private:
    void readEntry(const FolderEntry& entry, std::size_t folder, RootReading& reading);
    void readFragment(const FolderEntry& entry, std::size_t folder, RootReading& reading);
    void readLink(const FolderEntry& entry, std::size_t folder);
    void readEnablements(const FolderEntry& entry, std::size_t folder, RootReading& reading);
    void readDropIns(const FolderEntry& entry, std::size_t folder, RootReading& reading);
    void forEachIn(const FolderEntry& folder, RootReading& reading, auto visit);
    bool isInSearchPath(const std::filesystem::path& folder);
    std::string unitNamed(std::string name) const;

    const MachineFiles& machine;
    std::vector<std::filesystem::path> searchPath;
    /// Cached results of `isInSearchPath`.
    std::map<std::filesystem::path, bool> knownFolders;
    std::optional<std::filesystem::path> unreadable;
    UnitFolders found;
};

} // namespace tidemark
