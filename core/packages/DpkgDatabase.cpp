#include "core/packages/DpkgDatabase.h"

#include "core/base/Files.h"
#include "core/base/Text.h"
#include "core/packages/ListedPackages.h"
#include "core/storage/FolderReader.h"

#include <algorithm>

#include <fcntl.h>

namespace tidemark::DpkgDatabase {

namespace {

constexpr const char* statusFile = "/var/lib/dpkg/status";
constexpr const char* infoFolder = "/var/lib/dpkg/info";
constexpr const char* formatFile = "/var/lib/dpkg/info/format";
constexpr const char* updatesFolder = "/var/lib/dpkg/updates";
constexpr std::string_view listExtension = ".list";
constexpr std::string_view knownFormat = "1";
/// In bytes. The files of a full desktop have a tenth of these sizes.
constexpr std::size_t largestStatus = std::size_t{64} << 20;
constexpr std::size_t largestList = std::size_t{32} << 20;

using Packages = std::map<std::string, std::optional<PackageOwner>, std::less<>>;

/// The fields of one stanza of "status" that are used here.
struct Stanza {
    std::string_view package, architecture, status, version, multiArch;

    void take(std::string_view line) {
        const auto colon = line.find(": ");
        if (colon == std::string_view::npos)
            return;
        const std::string_view key = line.substr(0, colon);
        const std::string_view value = trimmed(line.substr(colon + 2));
        if (key == "Package")
            package = value;
        else if (key == "Architecture")
            architecture = value;
        else if (key == "Status")
            status = value;
        else if (key == "Version")
            version = value;
        else if (key == "Multi-Arch")
            multiArch = value;
    }

    /// A package that can be installed for several architectures at once has a list for each.
    std::string listName() const {
        std::string name(package);
        return multiArch == "same" ? name.append(":").append(architecture) : name;
    }

    /// False when only configuration is left ("deinstall ok config-files"). While dpkg works,
    /// packages with files may also be "unpacked" and others.
    bool hasFiles() const { return !version.empty() && !status.ends_with(" config-files"); }
};

/// Takes off the first line; empty at the end of a stanza.
std::string_view nextLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

std::expected<FolderReader, int> openFolder(const MachineFiles& machine, const char* path) {
    auto folder = machine.open(machine.canonical(path), O_RDONLY | O_DIRECTORY);
    if (!folder)
        return std::unexpected(folder.error());
    return FolderReader(*std::move(folder));
}

/// Whether dpkg is running or was interrupted, so that "status" is out of date. Also true when
/// that can't be read.
bool hasUpdates(const MachineFiles& machine) {
    auto folder = openFolder(machine, updatesFolder);
    if (!folder)
        return folder.error() != ENOENT;
    while (const dirent* entry = folder->next())
        if (std::string_view(entry->d_name).find_first_not_of("0123456789")
            == std::string_view::npos)
            return true;
    return folder->readError() != 0;
}

/// Adds the list of one package; false when it can't be read.
bool addList(ListedPackages& all, int folder, const std::string& name, const PackageOwner& owner) {
    const FileDescriptor file(
        ::openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file)
        return false;
    try {
        all.add(owner, readFile(file, name, largestList));
        return true;
    } catch (const FileError&) {
        return false;
    }
}

/// Returns false when a list can't be read or is missing, or when "status" has no stanza for it:
/// then "status" is damaged, or was written at another time than the lists. False after a stop
/// request, too.
bool addLists(ListedPackages& all, FolderReader& folder, const Packages& packages,
              const std::stop_token& stop) {
    bool isWhole = true;
    auto missing =
        std::ranges::count_if(packages, [](const auto& each) { return each.second.has_value(); });
    while (const dirent* entry = folder.next()) {
        if (stop.stop_requested())
            return false;
        const std::string name = entry->d_name;
        if (!name.ends_with(listExtension))
            continue;
        const auto package =
            packages.find(std::string_view(name).substr(0, name.size() - listExtension.size()));
        if (package == packages.end()) {
            isWhole = false;
        } else if (package->second) {
            isWhole = addList(all, folder.descriptor(), name, *package->second) && isWhole;
            --missing;
        }
    }
    return isWhole && missing == 0 && folder.readError() == 0;
}

DatabaseState state(const MachineFiles& machine) {
    if (stateOf(machine, {statusFile}).empty())
        return {};
    return stateOf(machine, {statusFile, infoFolder, formatFile, updatesFolder});
}

std::unique_ptr<PackageDatabase> failed(PackageFailure why) {
    return std::make_unique<UnreadablePackages>(why);
}

/// Throws `FileError`.
std::unique_ptr<PackageDatabase> read(const MachineFiles& machine, const OwnedFolders& folders,
                                      const std::stop_token& stop) {
    if (trimmed(machine.read(formatFile, largestStatus)) != knownFormat)
        return failed(PackageFailure::unsupported);
    if (hasUpdates(machine))
        return failed(PackageFailure::unreadable);
    const auto listed = packages(machine.read(statusFile, largestStatus));
    auto info = openFolder(machine, infoFolder);
    if (!info)
        return failed(PackageFailure::unreadable);
    auto all = std::make_unique<ListedPackages>(machine, folders);
    if (!addLists(*all, *info, listed, stop))
        all->markIncomplete();
    return all;
}

std::unique_ptr<PackageDatabase> open(const MachineFiles& machine, const OwnedFolders& folders,
                                      const std::stop_token& stop) {
    try {
        return read(machine, folders, stop);
    } catch (const FileError& error) {
        // Databases before dpkg 1.15.6, and those of some images, have no file "format".
        return failed(error.code() == ENOENT ? PackageFailure::unsupported
                                             : PackageFailure::unreadable);
    }
}

} // namespace

PackageDatabaseForm form() {
    return {state, open};
}

std::map<std::string, std::optional<PackageOwner>, std::less<>> packages(std::string_view status) {
    Packages found;
    while (!status.empty()) {
        Stanza stanza;
        for (auto line = nextLine(status); !line.empty(); line = nextLine(status))
            stanza.take(line);
        auto& owner = found[stanza.listName()];
        if (stanza.hasFiles())
            owner = PackageOwner{textFromBytes(stanza.package), textFromBytes(stanza.version)};
    }
    return found;
}

} // namespace tidemark::DpkgDatabase
