#include "core/capture/DesktopEntry.h"

#include "core/base/Files.h"
#include "core/base/Text.h"
#include "core/capture/SnapVersion.h"

#include <algorithm>

namespace tidemark::DesktopEntry {

namespace {

constexpr std::string_view extension = ".desktop";

std::unexpected<ApplicationFailure> unreadable() {
    return std::unexpected(ApplicationFailure::unreadable);
}

std::expected<KeyFile, KeyFile::Failure> parsed(std::string bytes) {
    return KeyFile::parse(std::move(bytes), KeyFile::Continuation::none);
}

ApplicationReading described(const KeyFile& file, const FolderEntry& entry) {
    if (file.value(group, "Type") != "Application" || isTrue(file, "Hidden")
        || isTrue(file, "NoDisplay"))
        return std::unexpected(ApplicationFailure::noApplication);
    const std::string name = KeyFile::unescaped(file.value(group, "Name").value_or(""));
    if (trimmed(name).empty())
        return unreadable();
    return FoundApplication{{.bundleID = {},
                             .name = std::string(trimmed(name)),
                             .version = std::string(unknownVersion),
                             .build = {},
                             .path = entry.pathText(),
                             .modified = entry.modified}};
}

void takeSnapVersion(FoundApplication& found, const std::string& instance,
                     const MachineFiles& machine) {
    auto snap = SnapVersion::read(machine, instance);
    if (!snap) {
        found.missesVersion = PackageFailure::unreadable;
        return;
    }
    found.application.version = std::move(snap->version);
    found.application.build = std::move(snap->revision);
}

void takePackageVersion(FoundApplication& found, const FolderEntry& entry,
                        PackageIndex::Reading& packages) {
    const auto owner = packages.owner(entry.path.native());
    if (!owner) {
        found.missesVersion = owner.error();
    } else if (*owner) {
        found.application.version = upstreamVersion((*owner)->version);
        found.application.build = (*owner)->version;
    }
}

} // namespace

bool recognises(const FolderEntry& entry, RootFamily family) {
    return family == RootFamily::desktopEntries && entry.kind == FolderEntry::Kind::regular
           && entry.path.native().ends_with(extension);
}

ApplicationReading read(const FolderEntry& entry, const ApplicationSurroundings& where) try {
    const auto file = parsed(entry.read(KeyFile::maximumSize));
    if (!file)
        return unreadable();
    auto found = described(*file, entry);
    if (!found)
        return found;
    found->application.bundleID = identifier(entry.path, where.root);
    if (const auto snap = file->value(group, "X-SnapInstanceName"))
        takeSnapVersion(*found, *snap, where.machine);
    else if (where.packages)
        takePackageVersion(*found, entry, *where.packages);
    return found;
} catch (const FileError&) {
    return unreadable();
}

ApplicationReading described(std::string bytes, const FolderEntry& entry) {
    const auto file = parsed(std::move(bytes));
    return file ? described(*file, entry) : unreadable();
}

bool isTrue(const KeyFile& file, std::string_view key) {
    const auto value = file.value(group, key);
    return value == "true" || value == "1";
}

std::string identifier(const std::filesystem::path& path, const std::filesystem::path& root) {
    std::string below = path.lexically_relative(root).native();
    below.erase(below.size() - extension.size());
    std::ranges::replace(below, '/', '-');
    return textFromBytes(below);
}

} // namespace tidemark::DesktopEntry
