#include "app/base/Background.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Text.h"
#include "core/presentation/SystemWords.h"
#include "recorder/Commands.h"
#include "recorder/NoOptions.h"
#include "recorder/Recorder.h"
#include "recorder/StoredRecords.h"
#include "recorder/TypedInvocation.h"

#include <map>
#include <set>

namespace tidemark {

namespace {

namespace fs = std::filesystem;

/// A folder in the list, with its description.
struct Line {
    bool isMonitored = false;
    std::string words;
    fs::path path;
    /// The bookmark of a monitored folder.
    Data bookmark{};

    std::optional<std::string> failure() const {
        return isMonitored ? bookmarkAccessFailure(BookmarkOperations::direct(), bookmark)
                           : directoryAccessFailure(path);
    }
};

std::string joined(const FolderPurposes& purposes) {
    std::string text;
    for (const FolderPurpose purpose : purposes)
        text += (text.empty() ? "" : ", ") + systemWords::shown(rawValue(purpose));
    return text.empty() ? "nothing" : text;
}

std::vector<Line> linesOf(const FolderAccess& folders) {
    std::vector<Line> lines;
    for (const auto& grant : folders.grants())
        lines.push_back({true, oneLine(grant.path) + "  for " + joined(grant.purposes) + "; ",
                         fs::path(grant.path), grant.bookmark});
    for (const auto& folder : folders.recommendedFolders())
        lines.push_back(
            {false,
             oneLine(folder.title) + ", " + oneLine(textFromBytes(folder.url.native())) + ": ",
             folder.url});
    return lines;
}

/// The list as text, with whether each folder can be opened. May block on a network volume.
std::string withAccess(const std::vector<Line>& lines, const std::stop_token& stop = {}) {
    std::set<fs::path> monitored;
    std::map<bool, std::string> groups;
    for (const auto& line : lines) {
        if (stop.stop_requested())
            break;
        if (!line.isMonitored && monitored.contains(canonicalPath(line.path)))
            continue;
        if (line.isMonitored)
            monitored.insert(line.path);
        groups[line.isMonitored] +=
            "  " + line.words + systemWords::shown(line.failure().value_or("readable")) + "\n";
    }
    const auto shown = [&](bool group) {
        return groups[group].empty() ? "  none\n" : groups[group];
    };
    return "Monitored\n" + shown(true) + "Recommended\n" + shown(false);
}

std::string problem(const FolderAccess& folders) {
    return folders.message() && !folders.messageIsSuccess()
               ? oneLine(systemWords::shown(*folders.message())) + "\n"
               : "";
}

QCoro::Task<std::string> foldersList(CommandContext& context, const NoOptions&) {
    const auto& folders = context.folders();
    const auto look = [lines = linesOf(folders)](const std::stop_token& stop) {
        return withAccess(lines, stop);
    };
    std::string out = co_await runInBackground(look, context.stop);
    co_return out + problem(folders);
}

std::optional<CommandAnswer> storedList(StoredRecords& stored, const NoOptions&) {
    const FolderAccess folders(stored.preferences(), BookmarkOperations::direct());
    return CommandAnswer{withAccess(linesOf(folders)) + problem(folders)};
}

} // namespace

Command commands::foldersList() {
    return makeCommand<NoOptions, &tidemark::foldersList>(
        {
            .name = "folders list",
            .group = CommandGroup::choices,
            .summary = "List the monitored and the recommended folders",
            .family = "List or change the monitored folders",
        },
        {.fromStored = storedList});
}

} // namespace tidemark
