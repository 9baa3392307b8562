#include "core/capture/AutostartEntries.h"

#include "core/base/FileError.h"
#include "core/base/KeyFile.h"
#include "core/base/Text.h"
#include "core/capture/CommandText.h"
#include "core/capture/FolderListing.h"

#include <algorithm>
#include <map>

namespace tidemark::AutostartEntries {

namespace {

namespace fs = std::filesystem;
using BackgroundDefinition::Failure;
using CommandText::Quoting;
using PropertyList::Array;
using PropertyList::Dictionary;
using Kind = FolderEntry::Kind;

constexpr std::string_view group = "Desktop Entry";

struct Entry {
    enum class State { enabled, disabled, unreadable, link };

    std::size_t folder = 0;
    fs::path path;
    State state = State::unreadable;
    /// Without the keys that depend on the state of other files.
    Dictionary definition{};
};
/// The entries of each file name, the one in the most preferred folder first.
using Entries = std::map<std::string, std::vector<Entry>>;

bool isTrue(const KeyFile& file, std::string_view key) {
    return file.value(group, key) == "true";
}

bool isDisabled(const KeyFile& file) {
    return isTrue(file, "Hidden") || file.value(group, "X-GNOME-Autostart-enabled") == "false";
}

/// The command with one space for each run of blanks, and the path of its program without links
/// into /usr.
std::string normalisedCommand(const std::string& command, const MergedFolders& merged) {
    return merged.canonical(CommandText::withSingleBlanks(command, Quoting::desktopEntry));
}

Dictionary definitionOf(const KeyFile& file, const fs::path& path, const MergedFolders& merged) {
    Dictionary definition;
    definition["Label"] = {textFromBytes(path.stem().native())};
    if (const auto exec = file.value(group, "Exec")) {
        const std::string command = KeyFile::unescaped(*exec);
        if (const auto program = CommandText::firstWord(command, Quoting::desktopEntry))
            definition["Program"] = {merged.canonical(*program)};
        definition["ProgramArguments"] = {Array{{normalisedCommand(command, merged)}}};
    }
    if (isTrue(file, "X-GNOME-AutoRestart"))
        definition["KeepAlive"] = {true};
    if (const auto folder = file.value(group, "Path"); folder && !folder->empty())
        definition["WorkingDirectory"] = {*folder};
    Array sessions;
    for (const char* key : {"OnlyShowIn", "NotShowIn"})
        if (const auto desktops = file.value(group, key))
            sessions.push_back({key + ("=" + *desktops)});
    if (!sessions.empty())
        definition["LimitLoadToSessionType"] = {std::move(sessions)};
    return definition;
}

Entry readFile(const FolderEntry& entry, std::size_t folder, RootReading& reading,
               const MergedFolders& merged) {
    Entry result{.folder = folder, .path = entry.path};
    try {
        std::string bytes = entry.read(KeyFile::maximumSize);
        reading.hold(bytes.size());
        const auto file = KeyFile::parse(std::move(bytes), KeyFile::Continuation::none);
        if (!file || !file->hasGroup(group))
            return result;
        result.state = isDisabled(*file) ? Entry::State::disabled : Entry::State::enabled;
        result.definition = definitionOf(*file, entry.path, merged);
    } catch (const FileError&) {
        // The state remains `unreadable`.
    }
    return result;
}

Entry readEntry(const FolderEntry& entry, std::size_t folder, RootReading& reading,
                const MergedFolders& merged) {
    if (entry.kind != Kind::link)
        return readFile(entry, folder, reading, merged);
    // A link to /dev/null is a common way to disable an entry of the system.
    const bool leadsToNothing =
        (entry.path.parent_path() / entry.linkText()).lexically_normal() == "/dev/null";
    return {.folder = folder,
            .path = entry.path,
            .state = leadsToNothing ? Entry::State::disabled : Entry::State::link};
}

/// False when the folder can't be read completely. One that does not exist has no entries.
bool readFolder(const MachineFiles& machine, const fs::path& folder, std::size_t index,
                RootReading& reading, const MergedFolders& merged, Entries& entries) {
    if (!reading.mayContinue())
        return false;
    const auto listing =
        FolderListing::open(machine, folder, FolderListing::Hidden::skipped, reading.budget());
    if (!listing)
        return listing.error() == FolderListing::Failure::missing;
    for (const auto& name : listing->names()) {
        if (!reading.mayContinue())
            return false;
        const auto entry = listing->entry(name);
        if (entry.kind == Kind::unknown)
            return false;
        if (entry.extension() == "desktop" && entry.kind != Kind::missing)
            entries[name].push_back(readEntry(entry, index, reading, merged));
    }
    return true;
}

/// Adds the definitions of the files with one name. Each file can disable those in less preferred
/// folders.
void addDefinitions(std::vector<Entry>& entries, FamilyDefinitions& result) {
    using enum Entry::State;
    bool isDisabledAbove = false;
    bool isUnknownAbove = false;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        Entry& entry = entries[i];
        if (entry.state == link) {
            result.links.emplace_back(entry.folder, entry.path);
            continue;
        }
        isUnknownAbove = isUnknownAbove || entry.state == unreadable;
        if (isUnknownAbove) {
            result.definitions.push_back(
                {entry.folder, entry.path, std::unexpected(Failure::unreadable)});
            continue;
        }
        const bool isOnlyState =
            entry.state == disabled && (entry.definition.empty() || i + 1 < entries.size());
        isDisabledAbove = isDisabledAbove || isOnlyState;
        if (isOnlyState)
            continue;
        const bool isOff = isDisabledAbove || entry.state == disabled;
        entry.definition["Disabled"] = {isOff};
        entry.definition["RunAtLoad"] = {!isOff};
        result.definitions.push_back({entry.folder, entry.path, std::move(entry.definition)});
    }
}

} // namespace

FamilyDefinitions read(const MachineFiles& machine, const std::vector<fs::path>& folders,
                       std::vector<RootReading>& readings, const MergedFolders& merged) {
    FamilyDefinitions result;
    Entries entries;
    for (std::size_t i = 0; i < folders.size(); ++i) {
        if (readFolder(machine, folders[i], i, readings[i], merged, entries))
            continue;
        readings[i].fail();
        if (!result.unreadable)
            result.unreadable = folders[i];
    }
    for (auto& [name, files] : entries)
        addDefinitions(files, result);
    return result;
}

} // namespace tidemark::AutostartEntries
