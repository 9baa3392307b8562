// Checks folders in the background and allows recommended ones on the main thread. A grant may be
// changed or removed in between.

#include "app/base/Background.h"
#include "app/capture/FolderAccess.h"
#include "app/preferences/PreferenceKeys.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Error.h"
#include "core/base/Text.h"

#include <algorithm>
#include <set>

namespace tidemark {

namespace fs = std::filesystem;

namespace {

bool isReadable(const fs::path& folder) {
    return !directoryAccessFailure(folder);
}

} // namespace

/// The result of the check of one folder.
struct FolderAccess::Tested {
    std::string title;
    /// The path of the recommended folder or of the grant.
    fs::path named;
    /// True for a recommended folder.
    bool mayAdd = false;
    /// For a recommended folder, which may be a link, the path without links; else `named`.
    fs::path canonical = named;
    std::optional<std::string> failure{};
};

/// Everything that the check of folders needs in the background.
struct FolderAccess::Checking {
    BookmarkOperations operations;
    Check isReadable;
    std::vector<FolderGrant> grants;

    /// The result for one folder. Blocks while the folder is read.
    Tested tested(Tested folder) const {
        // Links are only resolved for recommended folders: a granted folder that was replaced by a
        // link is another folder.
        if (folder.mayAdd)
            folder.canonical = canonicalPath(folder.named);
        fs::path url = folder.canonical;
        const auto path = textFromBytes(folder.canonical.native());
        const auto grant = std::ranges::find(grants, path, &FolderGrant::path);
        if (grant != grants.end()) {
            try {
                // The bookmark has the path as bytes. The text in the grant can't represent every
                // path.
                const auto resolved = operations.resolve(grant->bookmark);
                url = resolved.url;
                folder.failure = resolved.failure;
            } catch (const Error&) {
                // The path may still be usable.
            }
        }
        if (!folder.failure && !isReadable(url))
            folder.failure = directoryAccessFailure(url).value_or(unansweredFolder);
        return folder;
    }

    /// The results, only one for each folder, even if several links lead to it.
    std::vector<Tested> all(std::vector<Tested> folders, const FolderCalls& folderCalls,
                            const std::stop_token& stop) const {
        std::vector<Tested> seen;
        const auto isSeen = [&](const fs::path& canonical) {
            return std::ranges::find(seen, canonical, &Tested::canonical) != seen.end();
        };
        for (auto& folder : folders) {
            if (isSeen(folder.canonical))
                continue;
            const auto look = [checking = *this, folder] { return checking.tested(folder); };
            folder.failure = unansweredFolder;
            auto found = folderCalls.answer(folder.named, look, stop).value_or(folder);
            if (!isSeen(found.canonical))
                seen.push_back(std::move(found));
        }
        return seen;
    }
};

void FolderAccess::note(const std::vector<Tested>& tested) {
    for (const auto& folder : tested) {
        for (const auto& place : {folder.named, folder.canonical}) {
            const std::string path = textFromBytes(place.native());
            statuses[path] = folder.failure ? AccessStatus::unavailable : AccessStatus::readable;
            failures.erase(path);
            if (folder.failure)
                failures[path] = *folder.failure;
        }
    }
}

QCoro::Task<void> FolderAccess::enableReadableRecommended(std::vector<RecommendedFolder> folders,
                                                          Check check) {
    const auto hold = tasks.hold();
    std::vector<Tested> list;
    for (const auto& folder : folders)
        list.push_back({.title = folder.title, .named = folder.url, .mayAdd = true});
    for (const auto& grant : grantList)
        list.push_back({.title = std::string(lastPathComponent(grant.path)), .named = grant.path});

    const Checking checking{operations, check ? check : isReadable, grantList};
    const auto work = [checking, list, asked = calls](const std::stop_token& stop) {
        return checking.all(list, asked, stop);
    };
    const std::vector<Tested> tested = co_await runInBackground(work, waits.get_token());
    note(tested);
    const auto wasRemoved = [&](const Tested& folder) {
        const auto path = textFromBytes(folder.canonical.native());
        return std::ranges::find(checking.grants, path, &FolderGrant::path) != checking.grants.end()
               && !isGranted(folder.canonical);
    };

    std::vector<fs::path> fresh;
    std::vector<std::string> unreadable;
    for (const auto& folder : tested) {
        // The user removed the grant while the check was running.
        if (wasRemoved(folder))
            continue;
        if (folder.failure)
            unreadable.push_back(folder.title);
        else if (folder.mayAdd && !isGranted(folder.canonical))
            fresh.push_back(folder.named);
    }
    PurposesOf purposesOf = [folders, tested](const fs::path& path) {
        auto purposes = FolderGrant::suggestedPurposes(path);
        for (const auto& folder : folders) {
            const auto found = std::ranges::find(tested, folder.url, &Tested::named);
            const bool isCanonical = found != tested.end() && found->canonical == path;
            if (folder.representsFamily && (isCanonical || folder.url == path))
                return FolderPurposes{folder.purpose};
            if (folder.url == path)
                purposes.insert(folder.purpose);
        }
        return purposes;
    };
    try {
        if (!fresh.empty())
            co_await add(std::move(fresh), std::move(purposesOf));
    } catch (const Error& error) {
        report("Couldn’t save the readable folder selections. " + std::string(error.what()));
        co_return;
    }
    if (unreadable.empty())
        report("All selected folders are ready.", true);
    else
        report("Not yet readable: " + joined(unreadable, ", ")
               + ". Check System Settings or folder permissions.");
}

QCoro::Task<bool> FolderAccess::restoreRecommendedAccessAfterRestart(Check check) {
    const auto hold = tasks.hold();
    const bool isPending = read(preferences, preferenceKeys::diskAccessSetupPending);
    if (!isPending && !read(preferences, preferenceKeys::folderSetupCompleted))
        co_return false;
    // Being able to read a folder shows that the user agreed only where the system protects
    // folders.
    if (std::ranges::none_of(recommended, &RecommendedFolder::isGuardedBySystem))
        co_return false;
    auto folders = candidates();
    if (isPending) {
        const auto paths = [this] {
            std::set<std::string> all;
            for (const auto& grant : grantList)
                all.insert(grant.path);
            return all;
        };
        const auto before = paths();
        co_await enableReadableRecommended(folders, check);
        co_return paths() != before;
    }

    std::erase_if(folders,
                  [](const RecommendedFolder& folder) { return !folder.isGuardedBySystem; });
    if (folders.empty() || isGranted(folders.front().url))
        co_return false;
    const auto look = [url = folders.front().url, readable = check ? check : isReadable] {
        return readable(url) ? std::optional(canonicalPath(url)) : std::nullopt;
    };
    const auto work = [look, url = folders.front().url,
                       asked = calls](const std::stop_token& stop) {
        return asked.answer(url, look, stop).value_or(std::nullopt);
    };
    const std::optional<fs::path> canonical = co_await runInBackground(work, waits.get_token());
    if (!canonical || isGranted(*canonical))
        co_return false;
    co_await enableReadableRecommended(folders, check);
    co_return true;
}

} // namespace tidemark
