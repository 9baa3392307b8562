#include "core/packages/PacmanDatabase.h"

#include "core/base/Files.h"
#include "core/base/Text.h"
#include "core/packages/ListedPackages.h"
#include "core/storage/FolderReader.h"

#include <fcntl.h>

namespace tidemark::PacmanDatabase {

namespace {

constexpr const char* localFolder = "/var/lib/pacman/local";
constexpr const char* versionFile = "/var/lib/pacman/local/ALPM_DB_VERSION";
constexpr const char* lockFile = "/var/lib/pacman/db.lck";
constexpr std::string_view knownVersion = "9";
/// The value of the field "%REASON%" of a package that was installed because others needed it.
constexpr std::string_view dependencyReason = "1";
constexpr std::size_t largestFile = std::size_t{32} << 20;

/// Throws `FileError`.
std::string readIn(const FileDescriptor& folder, const char* name) {
    const FileDescriptor file(
        ::openat(folder.get(), name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file)
        throw FileError::ofSystem(name, "could not be read", errno);
    return readFile(file, name, largestFile);
}

/// The only line of a field; empty when there is none.
std::string line(std::string_view text, std::string_view name) {
    return textFromBytes(trimmed(field(text, name).value_or("")));
}

std::expected<FolderReader, int> openPackages(const MachineFiles& machine) {
    auto local = machine.open(machine.canonical(localFolder), O_RDONLY | O_DIRECTORY);
    if (!local)
        return std::unexpected(local.error());
    return FolderReader(*std::move(local));
}

FileDescriptor openPackage(const FolderReader& packages, const dirent* entry) {
    return FileDescriptor(::openat(packages.descriptor(), entry->d_name,
                                   O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

/// False when the package is not recorded whole, as while it is being installed.
bool add(ListedPackages& all, const FileDescriptor& folder) {
    try {
        const std::string description = readIn(folder, "desc");
        const PackageOwner owner{line(description, "%NAME%"), line(description, "%VERSION%")};
        if (owner.package.empty() || owner.version.empty())
            return false;
        // A package without files, which only requires others, does not have this field.
        const std::string files = readIn(folder, "files");
        all.add(owner, field(files, "%FILES%").value_or(""));
        return true;
    } catch (const FileError&) {
        return false;
    }
}

/// False when a package is not recorded whole, and after a stop request.
bool addAll(ListedPackages& all, FolderReader& packages, const std::stop_token& stop) {
    bool isWhole = true;
    while (const dirent* entry = packages.next()) {
        if (stop.stop_requested())
            return false;
        const FileDescriptor folder = openPackage(packages, entry);
        if (folder)
            isWhole = add(all, folder) && isWhole;
        else if (errno != ENOTDIR)
            isWhole = false;
    }
    return isWhole && packages.readError() == 0;
}

DatabaseState state(const MachineFiles& machine) {
    if (stateOf(machine, {localFolder}).empty())
        return {};
    return stateOf(machine, {localFolder, versionFile, lockFile});
}

std::unique_ptr<PackageDatabase> failed(PackageFailure why) {
    return std::make_unique<UnreadablePackages>(why);
}

/// Throws `FileError`.
std::unique_ptr<PackageDatabase> read(const MachineFiles& machine, const OwnedFolders& folders,
                                      const std::stop_token& stop) {
    if (trimmed(machine.read(versionFile, largestFile)) != knownVersion)
        return failed(PackageFailure::unsupported);
    auto packages = openPackages(machine);
    if (!packages || !stateOf(machine, {lockFile}).empty())
        return failed(PackageFailure::unreadable);
    auto all = std::make_unique<ListedPackages>(machine, folders);
    if (!addAll(*all, *packages, stop))
        all->markIncomplete();
    return all;
}

std::unique_ptr<PackageDatabase> open(const MachineFiles& machine, const OwnedFolders& folders,
                                      const std::stop_token& stop) {
    try {
        return read(machine, folders, stop);
    } catch (const FileError&) {
        return failed(PackageFailure::unreadable);
    }
}

} // namespace

PackageDatabaseForm form() {
    return {state, open};
}

std::set<std::string, std::less<>> dependencies(const MachineFiles& machine) {
    std::set<std::string, std::less<>> names;
    auto packages = openPackages(machine);
    while (const dirent* entry = packages ? packages->next() : nullptr) {
        try {
            const std::string description = readIn(openPackage(*packages, entry), "desc");
            if (line(description, "%REASON%") == dependencyReason)
                names.insert(line(description, "%NAME%"));
        } catch (const FileError&) {
            // A file beside the folders of the packages, or a package that is being installed.
        }
    }
    return names;
}

std::optional<std::string_view> field(std::string_view text, std::string_view name) {
    const std::string heading = std::string(name) + "\n";
    auto start = text.find(heading);
    while (start != std::string_view::npos && start > 0 && text[start - 1] != '\n')
        start = text.find(heading, start + 1);
    if (start == std::string_view::npos)
        return std::nullopt;
    text.remove_prefix(start + heading.size());
    // An empty line ends the field.
    if (text.starts_with('\n'))
        return text.substr(0, 0);
    const auto end = text.find("\n\n");
    return text.substr(0, end == std::string_view::npos ? end : end + 1);
}

} // namespace tidemark::PacmanDatabase
