#include "recorder/FolderCommands.h"

#include "app/base/Background.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Text.h"

#include <algorithm>
#include <map>
#include <set>

namespace tidemark::folderCommands {

namespace {

namespace fs = std::filesystem;
using Name = RecorderArguments::Command;

/// A folder in the list: what is said of it, and where it is.
struct Line {
    bool isMonitored = false;
    std::string words;
    fs::path path;
    /// Of a monitored folder.
    Data bookmark{};

    std::optional<std::string> failure() const {
        return isMonitored ? bookmarkAccessFailure(BookmarkOperations::direct(), bookmark)
                           : directoryAccessFailure(path);
    }
};

std::string joined(const FolderPurposes& purposes) {
    std::string text;
    for (const FolderPurpose purpose : purposes)
        text += (text.empty() ? "" : ", ") + std::string(rawValue(purpose));
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

/// Blocks: a network volume may not answer.
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
        groups[line.isMonitored] += "  " + line.words + line.failure().value_or("readable") + "\n";
    }
    const auto shown = [&](bool group) {
        return groups[group].empty() ? "  none\n" : groups[group];
    };
    return "Monitored\n" + shown(true) + "Recommended\n" + shown(false);
}

FolderPurposes purposesOf(const RecorderArguments& arguments) {
    FolderPurposes chosen;
    for (const auto& text : arguments.purposes)
        if (const auto purpose = json::fromRawValue<FolderPurpose>(text))
            chosen.insert(*purpose);
    return chosen;
}

/// Two commands at once would end each other's change.
void begin(const CommandContext& context) {
    if (context.state().isManagingFolders || context.state().isCheckingRecommendedAccess)
        throw Error(anotherOperation);
    context.model().beginFolderManagement();
}

/// The capture that follows a changed choice is not waited for; without a recorder there is none.
void finish(const CommandContext& context) {
    if (context.isRunning && *context.state().loaded)
        context.recorder.tasks().start(context.model().finishFolderManagement());
    else
        context.model().completeFolderManagement();
}

/// A path as it was given, made whole: as text, and with links resolved.
struct Given {
    std::string text;
    std::string canonical;
};
QCoro::Task<Given> given(CommandContext& context) {
    const fs::path whole = context.directory / context.arguments.path;
    const auto resolve = [whole](const std::stop_token&) {
        return textFromBytes(canonicalPath(whole).native());
    };
    std::string canonical = co_await runInBackground(resolve);
    co_return Given{textFromBytes(standardizedPath(whole).native()), std::move(canonical)};
}

const FolderGrant& granted(const FolderAccess& folders, const Given& path) {
    // A folder that has become a link is known by where it was.
    for (const auto& candidate : {path.text, path.canonical})
        if (const auto grant = std::ranges::find(folders.grants(), candidate, &FolderGrant::path);
            grant != folders.grants().end())
            return *grant;
    throw Error(oneLine(path.text) + " is not monitored.");
}

} // namespace

std::string text(const FolderAccess& folders) {
    std::string out = withAccess(linesOf(folders));
    if (folders.message() && !folders.messageIsSuccess())
        out += oneLine(*folders.message()) + "\n";
    return out;
}

QCoro::Task<std::string> list(CommandContext& context) {
    const auto& folders = context.folders();
    const auto look = [lines = linesOf(folders)](const std::stop_token& stop) {
        return withAccess(lines, stop);
    };
    std::string out = co_await runInBackground(look, context.stop);
    if (folders.message() && !folders.messageIsSuccess())
        out += oneLine(*folders.message()) + "\n";
    co_return out;
}

QCoro::Task<std::string> add(CommandContext& context) {
    begin(context);
    const auto cancel = qScopeGuard([&] { context.model().cancelFolderManagement(); });
    const auto path = co_await given(context);
    std::vector<fs::path> added{context.directory / context.arguments.path};
    FolderAccess::PurposesOf purposes =
        [wanted = purposesOf(context.arguments)](const fs::path& folder) {
            return wanted.empty() ? FolderGrant::suggestedPurposes(folder) : wanted;
        };
    co_await context.folders().add(std::move(added), std::move(purposes));
    finish(context);
    co_return "Monitoring " + oneLine(path.canonical) + ".\n";
}

QCoro::Task<std::string> change(CommandContext& context) {
    begin(context);
    const auto cancel = qScopeGuard([&] { context.model().cancelFolderManagement(); });
    const auto path = co_await given(context);
    const auto grant = granted(context.folders(), path);
    const auto& arguments = context.arguments;
    const bool removes = arguments.command == Name::removeFolder;
    if (removes)
        context.folders().remove(grant.id);
    else
        context.folders().setTracking(*purposesOf(arguments).begin(), arguments.on, grant.id);
    if (context.folders().message())
        throw Error(*context.folders().message());
    finish(context);
    const std::string name = oneLine(grant.path);
    co_return removes ? name + " is monitored no longer.\n"
                      : name + " is " + (arguments.on ? "" : "no longer ") + "read for "
                            + arguments.purposes.front() + ".\n";
}

QCoro::Task<std::string> check(CommandContext& context) {
    begin(context);
    const auto cancel = qScopeGuard([&] { context.model().cancelFolderManagement(); });
    if (context.state().isScanning || context.state().isSaving)
        throw Error(anotherOperation);
    co_await context.model().checkRecommendedAccess();
    finish(context);
    const auto& message = context.folders().message();
    co_return message ? oneLine(*message) + "\n" : "";
}

} // namespace tidemark::folderCommands
