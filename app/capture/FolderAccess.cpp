#include "app/capture/FolderAccess.h"

#include "app/base/Background.h"
#include "app/preferences/PreferenceKeys.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Error.h"
#include "core/base/JsonEncoder.h"
#include "core/base/Text.h"

#include <algorithm>
#include <utility>

namespace tidemark {

namespace {

constexpr std::string_view key = preferenceKeys::observationFolderBookmarks.name;

/// The recommended path itself, which may be a link.
std::string ownPath(const RecommendedFolder& folder) {
    return textFromBytes(folder.url.native());
}

} // namespace

FolderAccess::FolderAccess(Preferences& preferences, BookmarkOperations operations,
                           std::vector<RecommendedFolder> recommended, FolderCalls calls)
    : preferences(preferences), operations(std::move(operations)),
      recommended(std::move(recommended)), calls(std::move(calls)) {
    try {
        load();
    } catch (const Error&) {
        report("Saved folder access couldn’t be read. Choose folders again to restore "
               "observation.");
    }
}

void FolderAccess::load() {
    const auto stored = preferences.data(key);
    if (stored)
        grantList = FolderGrant::unified(FolderGrant::decodeList(stored->bytes));
    if (read(preferences, preferenceKeys::unifiedFolderTrackingMigrated))
        return;
    if (preferences.boolean(preferenceKeys::storageEnabled.name) == false)
        for (auto& grant : grantList)
            grant.purposes.erase(FolderPurpose::storage);
    if (preferences.isReadOnly())
        return;
    // Where the list can't be saved, this is repeated at the next start.
    if (!stored || preferences.set(key, Data{json::encoded(grantList)}))
        preferences.note(preferenceKeys::unifiedFolderTrackingMigrated.name, true);
}

void FolderAccess::persist(std::vector<FolderGrant> updated) {
    if (!preferences.set(key, Data{json::encoded(updated)}))
        throw Error(preferences.problem().value_or("The settings can’t be saved."));
    grantList = std::move(updated);
    noteChange();
}

void FolderAccess::report(std::optional<std::string> text, bool success) {
    lastMessage = std::move(text);
    lastMessageIsSuccess = success;
    noteChange();
}

FolderAccess::AccessStatus FolderAccess::accessStatus(const std::string& path) const {
    const auto found = statuses.find(path);
    return found == statuses.end() ? AccessStatus::unchecked : found->second;
}

std::optional<std::string> FolderAccess::accessFailure(const std::string& path) const {
    const auto found = failures.find(path);
    return found == failures.end() ? std::nullopt : std::optional(found->second);
}

std::map<std::string, FolderPurposes> FolderAccess::selection() const {
    std::map<std::string, FolderPurposes> tracked;
    for (const auto& grant : grantList)
        if (!grant.purposes.empty())
            tracked.emplace(grant.path, grant.purposes);
    return tracked;
}

const FolderGrant* FolderAccess::find(const Uuid& id) const {
    const auto found = std::ranges::find(grantList, id, &FolderGrant::id);
    return found == grantList.end() ? nullptr : &*found;
}

bool FolderAccess::isGranted(const std::filesystem::path& canonical) const {
    return std::ranges::find(grantList, textFromBytes(canonical.native()), &FolderGrant::path)
           != grantList.end();
}

void FolderAccess::setTracking(FolderPurpose purpose, bool enabled, const Uuid& id) {
    auto updated = grantList;
    for (auto& grant : updated) {
        if (grant.id != id)
            continue;
        if (enabled) {
            grant.purposes.insert(purpose);
            grant.availablePurposes.insert(purpose);
        } else {
            grant.purposes.erase(purpose);
        }
    }
    try {
        persist(std::move(updated));
        report(std::nullopt);
    } catch (const Error& error) {
        report(error.what());
    }
}

void FolderAccess::remove(const Uuid& id) {
    const FolderGrant* grant = find(id);
    if (!grant)
        return;
    const std::string path = grant->path;
    auto updated = grantList;
    std::erase_if(updated, [&](const FolderGrant& each) { return each.id == id; });
    try {
        persist(std::move(updated));
    } catch (const Error& error) {
        report(error.what());
        return;
    }
    // Remembers the removal, so that the folder is not added again at the next start.
    const auto same = std::ranges::find(recommended, path, ownPath);
    if (same != recommended.end())
        noteRemoved({path});
    else
        tasks.start(noteRemovedLink(path));
    report(std::nullopt);
}

void FolderAccess::noteRemoved(const std::vector<std::string>& paths) {
    auto removed = read(preferences, preferenceKeys::removedRecommendedPaths);
    const auto before = removed.size();
    for (const auto& path : paths)
        if (std::ranges::find(removed, path) == removed.end())
            removed.push_back(path);
    if (removed.size() != before)
        preferences.note(preferenceKeys::removedRecommendedPaths.name, std::move(removed));
}

QCoro::Task<void> FolderAccess::noteRemovedLink(std::string path) {
    const auto hold = tasks.hold();
    // Continues after a stop, so that the end of the program does not lose the user's choice.
    const auto work = [path, folders = recommended, asked = calls](const std::stop_token&) {
        std::vector<std::string> links;
        for (const auto& folder : folders) {
            const auto canonical =
                asked.answer(folder.url, [url = folder.url] { return canonicalPath(url); }, {});
            if (canonical && textFromBytes(canonical->native()) == path)
                links.push_back(ownPath(folder));
        }
        return links;
    };
    const std::vector<std::string> links = co_await runInBackground(work);
    noteRemoved(links);
}

void FolderAccess::completeSetup() {
    preferences.note(preferenceKeys::folderSetupCompleted.name, true);
    preferences.note(preferenceKeys::diskAccessSetupPending.name, false);
    preferences.note(preferenceKeys::diskAccessCheckRequested.name, false);
}

void FolderAccess::stopWaiting() {
    std::exchange(waits, std::stop_source()).request_stop();
}

std::vector<RecommendedFolder> FolderAccess::candidates() const {
    const auto removed = read(preferences, preferenceKeys::removedRecommendedPaths);
    auto folders = recommended;
    std::erase_if(folders, [&](const RecommendedFolder& folder) {
        return std::ranges::find(removed, ownPath(folder)) != removed.end();
    });
    return folders;
}

} // namespace tidemark
