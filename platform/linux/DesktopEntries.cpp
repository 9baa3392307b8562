#include "platform/linux/DesktopEntries.h"

#include "core/base/FileError.h"
#include "core/base/Files.h"
#include "core/base/KeyFile.h"
#include "core/base/Text.h"
#include "core/capture/CommandText.h"
#include "core/capture/DesktopEntry.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace tidemark {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view suffix = ".desktop";
constexpr int mostDepth = 3;

/// The name of the program in a value of `Exec`; empty when it has none. Of a program that env(1)
/// starts, the name is that of the program.
std::string programIn(std::string_view command) {
    using CommandText::Quoting;
    bool isNameToUnset = false;
    while (const auto word = CommandText::firstWord(command, Quoting::desktopEntry)) {
        const bool isOption = word->starts_with('-');
        const auto name = lastPathComponent(*word);
        if (!isNameToUnset && !isOption && name != "env" && !word->contains('='))
            return std::string(name);
        isNameToUnset = *word == "-u" || *word == "--unset";
        command = CommandText::afterFirstWord(command, Quoting::desktopEntry);
    }
    return {};
}

/// When an entry was last added to, removed from or replaced in a folder; absent when the folder
/// can't be read.
std::optional<fs::file_time_type> dateOf(const fs::path& folder) {
    std::error_code error;
    const auto date = fs::last_write_time(folder, error);
    return error ? std::nullopt : std::optional(date);
}

} // namespace

void DesktopEntries::refresh() {
    const auto isUnchanged = [](const auto& read) { return dateOf(read.first) == read.second; };
    if (!dates.empty() && std::ranges::all_of(dates, isUnchanged))
        return;
    dates.clear();
    names.clear();
    idsByClass.clear();
    idsByName.clear();
    idsByProgram.clear();
    for (const auto& folder : folders)
        readFolder(folder);
}

void DesktopEntries::readFolder(const fs::path& folder) {
    dates.emplace(folder, dateOf(folder));
    std::error_code error;
    fs::recursive_directory_iterator walk(folder, error);
    for (; !error && walk != fs::recursive_directory_iterator(); walk.increment(error)) {
        if (walk.depth() >= mostDepth)
            walk.disable_recursion_pending();
        const auto& path = walk->path();
        if (std::error_code unknown; walk->is_directory(unknown) && walk.recursion_pending())
            dates.emplace(path, dateOf(path));
        if (path.extension() != suffix)
            continue;
        std::string id = path.native().substr(folder.native().size() + 1);
        id.resize(id.size() - suffix.size());
        std::ranges::replace(id, '/', '-');
        // If an earlier folder has an entry with the same identifier, this one is ignored.
        if (!names.contains(id))
            readEntry(path, textFromBytes(id));
    }
}

void DesktopEntries::readEntry(const fs::path& file, const std::string& id) {
    std::string bytes;
    try {
        bytes = readFile(file, KeyFile::maximumSize);
    } catch (const FileError&) {
        return;
    }
    const auto keys = KeyFile::parse(std::move(bytes), KeyFile::Continuation::none);
    if (!keys || keys->value(DesktopEntry::group, "Type") != "Application")
        return;
    const bool isHidden = DesktopEntry::isTrue(*keys, "Hidden");
    names[id] = isHidden ? std::string() : keys->value(DesktopEntry::group, "Name").value_or(id);
    if (isHidden)
        return;
    idsByName.emplace(asciiLowercased(id), id);
    if (const auto windowClass = keys->value(DesktopEntry::group, "StartupWMClass"))
        idsByClass.emplace(asciiLowercased(*windowClass), id);
    const auto program = programIn(keys->value(DesktopEntry::group, "Exec").value_or(""));
    if (const auto [known, isNew] = idsByProgram.emplace(program, id); !isNew)
        known->second.clear();
}

std::optional<ClipApplication> DesktopEntries::withId(std::string_view id) {
    refresh();
    const auto found = names.find(id);
    if (found == names.end() || found->second.empty())
        return std::nullopt;
    return ClipApplication{found->first, found->second};
}

std::optional<ClipApplication> DesktopEntries::withWindowClass(std::string_view windowClass) {
    refresh();
    const auto name = asciiLowercased(windowClass);
    auto found = application(idsByClass, name);
    return found ? found : application(idsByName, name);
}

std::optional<ClipApplication> DesktopEntries::withProgram(std::string_view program) {
    refresh();
    return application(idsByProgram, program);
}

std::optional<ClipApplication>
DesktopEntries::application(const std::map<std::string, std::string>& index,
                            std::string_view key) const {
    const auto found = index.find(std::string(key));
    if (key.empty() || found == index.end() || found->second.empty())
        return std::nullopt;
    return ClipApplication{found->second, names.at(found->second)};
}

} // namespace tidemark
