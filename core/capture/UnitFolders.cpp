#include "core/capture/UnitFolders.h"

#include "core/base/FileError.h"
#include "core/base/Text.h"
#include "core/capture/UnitName.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace tidemark {

namespace {

namespace fs = std::filesystem;
using Kind = FolderEntry::Kind;

constexpr auto enablingFolders =
    std::to_array<std::string_view>({".wants", ".requires", ".upholds"});
constexpr std::string_view dropInFolder = ".d";
constexpr std::string_view dropInFile = ".conf";
/// The most links that are followed from one name of a unit to the next: they can lead in a circle.
constexpr int mostFurtherNames = 8;

bool endsWithAny(std::string_view name, const auto& endings) {
    return std::ranges::any_of(endings, [&](auto ending) { return name.ends_with(ending); });
}

/// Whether drop-ins for this name can belong to a unit that is an item. The name is that of a unit,
/// such as "ssh.service", or of a kind of units, such as "service".
bool isDropInTarget(std::string_view name) {
    return UnitName::canBeItem(name) || UnitName::canBeItem("all." + std::string(name));
}

struct Content {
    bool isEmpty = false;
    std::optional<KeyFile> file{};
};

/// The contents of a unit file; absent when it can't be read or is malformed.
Content contentOf(const FolderEntry& entry, RootReading& reading) {
    try {
        std::string bytes = entry.read(KeyFile::maximumSize);
        if (bytes.empty())
            return {.isEmpty = true};
        reading.hold(bytes.size());
        auto parsed = KeyFile::parse(std::move(bytes), KeyFile::Continuation::backslash);
        if (parsed)
            return {.file = *std::move(parsed)};
    } catch (const FileError&) {
        // Treated like a malformed file.
    }
    return {};
}

bool leadsToNothing(const fs::path& folder, const std::string& linkText) {
    return (folder / linkText).lexically_normal() == "/dev/null";
}

} // namespace

bool isUnitFolderOfDistribution(const fs::path& folder) {
    const std::string& path = folder.native();
    return isBelow(path, "/usr/lib") || isBelow(path, "/usr/share") || isBelow(path, "/lib");
}

std::optional<fs::path> UnitFoldersReader::read(std::size_t index, RootReading& reading) {
    unreadable.reset();
    const fs::path& folder = searchPath[index];
    const auto fail = [&] {
        reading.fail();
        return unreadable.value_or(folder);
    };
    if (!reading.mayContinue())
        return fail();
    const auto listing =
        FolderListing::open(machine, folder, FolderListing::Hidden::skipped, reading.budget());
    if (!listing && listing.error() == FolderListing::Failure::missing)
        return std::nullopt;
    if (!listing)
        return fail();
    for (const auto& name : listing->names()) {
        if (!reading.mayContinue())
            return fail();
        readEntry(listing->entry(name), index, reading);
        if (unreadable)
            return fail();
    }
    return std::nullopt;
}

UnitFolders UnitFoldersReader::finish() {
    for (auto& [name, unit] : found.aliases)
        unit = unitNamed(unit);
    for (const auto& [name, unit] : found.aliases) {
        const auto links = found.enablements.find(name);
        const bool isUnit = !found.fragments.contains(name) && found.fragments.contains(unit);
        if (isUnit && links != found.enablements.end())
            std::ranges::copy(links->second, std::back_inserter(found.enablements[unit]));
    }
    return std::move(found);
}

/// The unit of a name. A further name may lead to another one: on Debian display-manager.service
/// leads to gdm3.service, and that to gdm.service.
std::string UnitFoldersReader::unitNamed(std::string name) const {
    for (int i = 0; i < mostFurtherNames; ++i) {
        const auto alias = found.aliases.find(name);
        if (alias == found.aliases.end() || found.fragments.contains(name))
            break;
        name = alias->second;
    }
    return name;
}

void UnitFoldersReader::readEntry(const FolderEntry& entry, std::size_t folder,
                                  RootReading& reading) {
    const std::string name = entry.name();
    // As in a folder with read but without search permission.
    if (entry.kind == Kind::unknown)
        unreadable = entry.path.parent_path();
    else if (entry.kind == Kind::folder && endsWithAny(name, enablingFolders))
        readEnablements(entry, folder, reading);
    else if (entry.kind == Kind::folder && name.ends_with(dropInFolder)
             && isDropInTarget(name.substr(0, name.size() - dropInFolder.size())))
        readDropIns(entry, folder, reading);
    else if (!UnitName::canBeItem(name))
        return;
    else if (entry.kind == Kind::link)
        readLink(entry, folder);
    else if (entry.kind != Kind::missing)
        readFragment(entry, folder, reading);
}

void UnitFoldersReader::readFragment(const FolderEntry& entry, std::size_t folder,
                                     RootReading& reading) {
    auto content = contentOf(entry, reading);
    found.fragments[entry.name()].push_back({.folder = folder,
                                             .path = entry.path,
                                             .isMask = content.isEmpty,
                                             .content = std::move(content.file)});
}

void UnitFoldersReader::readLink(const FolderEntry& entry, std::size_t folder) {
    const std::string text = entry.linkText();
    const fs::path parent = entry.path.parent_path();
    if (leadsToNothing(parent, text)) {
        found.fragments[entry.name()].push_back(
            {.folder = folder, .path = entry.path, .isMask = true});
        return;
    }
    const fs::path target = (parent / text).lexically_normal();
    if (!isInSearchPath(target.parent_path())) {
        found.linkedUnits.push_back(entry.path);
        return;
    }
    const std::string name = target.filename().native();
    if (name == entry.name())
        return;
    found.aliases.try_emplace(entry.name(), name);
    if (!isUnitFolderOfDistribution(searchPath[folder]))
        found.enablements[name].push_back({entry.path, /*isOfDistribution=*/false});
}

/// Compares folders with links resolved: on most machines /lib/systemd/system and
/// /usr/lib/systemd/system are one folder, and units are linked by either path.
bool UnitFoldersReader::isInSearchPath(const fs::path& folder) {
    const auto known = knownFolders.find(folder);
    if (known != knownFolders.end())
        return known->second;
    const bool isIn = std::ranges::find(searchPath, machine.canonical(folder)) != searchPath.end();
    return knownFolders.emplace(folder, isIn).first->second;
}

void UnitFoldersReader::forEachIn(const FolderEntry& folder, RootReading& reading, auto visit) {
    const auto listing =
        FolderListing::open(folder, FolderListing::Hidden::skipped, reading.budget());
    if (!listing) {
        if (listing.error() != FolderListing::Failure::missing)
            unreadable = folder.path;
        return;
    }
    for (const auto& name : listing->names()) {
        if (!reading.mayContinue()) {
            unreadable = folder.path;
            return;
        }
        const auto entry = listing->entry(name);
        if (entry.kind == Kind::unknown)
            unreadable = folder.path;
        else if (entry.kind != Kind::missing)
            visit(entry);
    }
}

void UnitFoldersReader::readEnablements(const FolderEntry& entry, std::size_t folder,
                                        RootReading& reading) {
    const bool isOfDistribution = isUnitFolderOfDistribution(searchPath[folder]);
    forEachIn(entry, reading, [&](const FolderEntry& link) {
        if (link.kind == Kind::link && UnitName::canBeItem(link.name()))
            found.enablements[link.name()].push_back({link.path, isOfDistribution});
    });
}

void UnitFoldersReader::readDropIns(const FolderEntry& entry, std::size_t folder,
                                    RootReading& reading) {
    std::string target = entry.name();
    target.resize(target.size() - dropInFolder.size());
    forEachIn(entry, reading, [&](const FolderEntry& file) {
        const bool isFile = file.kind == Kind::regular || file.kind == Kind::link;
        if (!isFile || !file.name().ends_with(dropInFile))
            return;
        UnitFolders::DropIn dropIn{.folder = folder, .name = file.name()};
        if (file.kind == Kind::link) {
            dropIn.linkText = file.linkText();
            dropIn.isMask = leadsToNothing(entry.path, dropIn.linkText);
        } else {
            auto content = contentOf(file, reading);
            dropIn.isMask = content.isEmpty;
            dropIn.content = std::move(content.file);
        }
        found.dropIns[target].push_back(std::move(dropIn));
    });
}

} // namespace tidemark
