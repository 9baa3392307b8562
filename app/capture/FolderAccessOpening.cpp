// Where folders are opened and looked at: in the background, with the outcome taken over on the
// main thread. A grant may be changed or removed in between.

#include "app/base/Background.h"
#include "app/capture/FolderAccess.h"
#include "app/preferences/PreferenceKeys.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Error.h"
#include "core/base/Text.h"

#include <QScopeGuard>
#include <algorithm>
#include <set>

namespace tidemark {

namespace fs = std::filesystem;

namespace {

constexpr const char* unknownFailure = "Folder access was unavailable during the check.";

bool isReadable(const fs::path& folder) {
    return !directoryAccessFailure(folder);
}

FolderPurposes effectivePurposes(const FolderGrant& grant, bool measureStorage) {
    auto purposes = grant.purposes;
    if (!measureStorage)
        purposes.erase(FolderPurpose::storage);
    return purposes;
}

/// The roots of one capture, as they come together.
struct Roots {
    std::vector<fs::path> applications;
    std::vector<BackgroundRoot> background;
    std::vector<fs::path> storage;

    void add(const fs::path& url, FolderPurpose purpose) {
        switch (purpose) {
        case FolderPurpose::applications:
            return applications.push_back(url);
        case FolderPurpose::launchAgents:
            return background.push_back({url, BackgroundItem::Kind::agent});
        case FolderPurpose::launchDaemons:
            return background.push_back({url, BackgroundItem::Kind::daemon});
        case FolderPurpose::storage:
            return storage.push_back(url);
        }
    }
};

struct Bookmarked {
    fs::path url;
    Data bookmark;
};

/// Bookmarks of folders, each once, by their real paths.
std::vector<Bookmarked> bookmarked(const BookmarkOperations& operations,
                                   const std::vector<fs::path>& urls) {
    std::vector<Bookmarked> made;
    for (const auto& given : urls) {
        const auto url = canonicalPath(given);
        if (std::ranges::find(made, url, &Bookmarked::url) != made.end())
            continue;
        const bool started = operations.start(url);
        const auto stop = qScopeGuard([&] {
            if (started)
                operations.stop(url);
        });
        made.push_back({url, operations.create(url)});
    }
    return made;
}

std::string join(const std::vector<std::string>& names) {
    std::string text;
    for (const auto& name : names)
        text += (text.empty() ? "" : ", ") + name;
    return text;
}

} // namespace

/// What came of one grant.
struct FolderAccess::Opened {
    FolderGrant grant;
    std::optional<fs::path> url;
    /// Why it could not be started.
    std::optional<std::string> failure;
    /// Of a stale bookmark.
    std::optional<Bookmarked> fresh;

    bool isOpen() const { return url && !failure; }

    static Opened open(const BookmarkOperations& operations, const FolderGrant& grant) {
        Opened result{grant, {}, {}, {}};
        BookmarkOperations::Resolved resolved;
        try {
            resolved = operations.resolve(grant.bookmark);
        } catch (const Error&) {
            return result;
        }
        result.url = resolved.url;
        result.failure = resolved.failure;
        if (result.failure)
            return result;
        if (!operations.start(resolved.url)) {
            result.failure = directoryAccessFailure(resolved.url).value_or(unknownFailure);
            return result;
        }
        try {
            if (resolved.stale)
                result.fresh =
                    Bookmarked{standardizedPath(resolved.url), operations.create(resolved.url)};
        } catch (const Error&) {
            // The old bookmark led here, and will again.
        }
        return result;
    }
};

/// What came of the check of one folder.
struct FolderAccess::Tested {
    std::string title;
    /// As its status is kept.
    std::string path;
    fs::path url;
    /// Set where it is recommended.
    bool mayAdd = false;
    Data bookmark{};
    fs::path canonical{};
    std::optional<std::string> failure{};
};

void FolderAccess::note(const Opened& opened, std::vector<std::string>& issues) {
    const std::string& path = opened.grant.path;
    if (!opened.url) {
        issues.push_back("Couldn’t restore access to " + path
                         + ". Choose the folder again in Settings.");
    } else if (opened.failure) {
        statuses[path] = AccessStatus::unavailable;
        failures[path] = *opened.failure;
        issues.push_back("Folder access is unavailable for " + path
                         + ". Recheck access in Monitored Folders. Trash requires Full Disk "
                           "Access for the installed copy of Tidemark.");
    } else {
        statuses[path] = AccessStatus::readable;
        failures.erase(path);
    }
}

QCoro::Task<FolderCaptureAccess> FolderAccess::beginCapture(bool measureStorage) {
    const auto hold = tasks.hold();
    std::vector<FolderGrant> wanted;
    for (const auto& grant : grantList)
        if (!effectivePurposes(grant, measureStorage).empty())
            wanted.push_back(grant);
    const auto work = [bookmarks = operations, wanted](const std::stop_token&) {
        std::vector<Opened> all;
        for (const auto& grant : wanted)
            all.push_back(Opened::open(bookmarks, grant));
        return all;
    };
    const std::vector<Opened> all = co_await runInBackground(work);

    Roots roots;
    std::vector<std::string> issues;
    std::vector<fs::path> urls;
    auto updated = grantList;
    bool isChanged = false;
    for (const auto& opened : all) {
        const auto grant = std::ranges::find(updated, opened.grant.id, &FolderGrant::id);
        const auto purposes =
            grant == updated.end() ? FolderPurposes() : effectivePurposes(*grant, measureStorage);
        if (purposes.empty()) {
            if (opened.isOpen())
                operations.stop(*opened.url);
            continue;
        }
        note(opened, issues);
        if (!opened.isOpen())
            continue;
        urls.push_back(*opened.url);
        if (opened.fresh && grant->bookmark == opened.grant.bookmark) {
            grant->bookmark = opened.fresh->bookmark;
            grant->path = textFromBytes(opened.fresh->url.native());
            statuses[grant->path] = AccessStatus::readable;
            failures.erase(grant->path);
            isChanged = true;
        }
        for (const auto purpose : purposes)
            roots.add(*opened.url, purpose);
    }
    if (isChanged) {
        try {
            persist(std::move(updated));
        } catch (const Error&) {
            issues.emplace_back("Updated folder access couldn’t be saved.");
        }
    }
    if (roots.applications.empty())
        issues.emplace_back("No Applications folder has active access. Choose one in Settings to "
                            "track app changes.");
    if (roots.background.empty())
        issues.emplace_back("Background definitions are not observed until you allow a "
                            "LaunchAgents or LaunchDaemons folder in Settings.");
    Q_EMIT changed();
    ObservationOptions options(std::move(roots.applications), std::move(roots.background),
                               std::move(roots.storage));
    co_return FolderCaptureAccess(std::move(options), std::move(issues), std::move(urls),
                                  operations.stop);
}

QCoro::Task<void> FolderAccess::add(std::vector<fs::path> urls, PurposesOf purposes) {
    const auto hold = tasks.hold();
    const auto work = [bookmarks = operations, urls](const std::stop_token&) {
        return bookmarked(bookmarks, urls);
    };
    const std::vector<Bookmarked> made = co_await runInBackground(work);

    auto updated = grantList;
    for (const auto& [url, bookmark] : made) {
        const std::string path = textFromBytes(url.native());
        auto grant = std::ranges::find(updated, path, &FolderGrant::path);
        if (grant == updated.end()) {
            FolderGrant fresh{Uuid::random(), path, {}, {}, FolderGrant::suggestedPurposes(url)};
            grant = updated.insert(updated.end(), std::move(fresh));
        }
        grant->bookmark = bookmark;
        grant->purposes.merge(purposes(url));
        grant->availablePurposes.insert(grant->purposes.begin(), grant->purposes.end());
    }
    persist(std::move(updated));
    report(std::nullopt);
}

void FolderAccess::note(const std::vector<Tested>& tested) {
    for (const auto& folder : tested) {
        statuses[folder.path] = folder.failure ? AccessStatus::unavailable : AccessStatus::readable;
        failures.erase(folder.path);
        if (folder.failure)
            failures[folder.path] = *folder.failure;
    }
}

QCoro::Task<void> FolderAccess::enableReadableRecommended(std::vector<RecommendedFolder> folders,
                                                          Check check) {
    const auto hold = tasks.hold();
    if (sandboxed) {
        report("This edition requires individual folder approval. Full Disk Access does not "
               "override its sandbox.");
        co_return;
    }
    std::vector<Tested> list;
    for (const auto& folder : folders)
        list.push_back({.title = folder.title,
                        .path = textFromBytes(folder.url.native()),
                        .url = folder.url,
                        .mayAdd = true});
    for (const auto& grant : grantList)
        if (std::ranges::find(list, grant.path, &Tested::path) == list.end())
            list.push_back({.title = std::string(lastPathComponent(grant.path)),
                            .path = grant.path,
                            .url = grant.path,
                            .bookmark = grant.bookmark});

    const auto work = [list, bookmarks = operations,
                       readable = check ? check : isReadable](const std::stop_token&) {
        auto tested = list;
        for (auto& folder : tested) {
            try {
                // The path of a grant is a text, which not every path on disk is.
                if (!folder.mayAdd)
                    folder.url = bookmarks.resolve(folder.bookmark).url;
            } catch (const Error&) {
            }
            folder.canonical = canonicalPath(folder.url);
            if (!readable(folder.url))
                folder.failure = directoryAccessFailure(folder.url).value_or(unknownFailure);
        }
        return tested;
    };
    const std::vector<Tested> tested = co_await runInBackground(work);
    note(tested);

    std::vector<fs::path> fresh;
    std::vector<std::string> unreadable;
    for (const auto& folder : tested) {
        if (folder.failure)
            unreadable.push_back(folder.title);
        else if (folder.mayAdd && !isGranted(folder.canonical))
            fresh.push_back(folder.url);
    }
    try {
        if (!fresh.empty())
            co_await add(fresh, FolderGrant::suggestedPurposes);
    } catch (const Error& error) {
        report("Couldn’t save the readable folder selections. " + std::string(error.what()));
        co_return;
    }
    if (unreadable.empty())
        report("All selected folders are ready.", true);
    else
        report("Not yet readable: " + join(unreadable)
               + ". Check System Settings or folder permissions.");
}

QCoro::Task<bool> FolderAccess::restoreRecommendedAccessAfterRestart(Check check) {
    const auto hold = tasks.hold();
    const bool isPending = read(preferences, preference::diskAccessSetupPending);
    if (sandboxed || (!isPending && !read(preferences, preference::folderSetupCompleted)))
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

    std::erase_if(
        folders, [](const RecommendedFolder& folder) { return folder.url.filename() != ".Trash"; });
    if (folders.empty() || isGranted(folders.front().url))
        co_return false;
    const auto work = [url = folders.front().url,
                       readable = check ? check : isReadable](const std::stop_token&) {
        return readable(url) ? std::optional(canonicalPath(url)) : std::nullopt;
    };
    const std::optional<fs::path> canonical = co_await runInBackground(work);
    if (!canonical || isGranted(*canonical))
        co_return false;
    co_await enableReadableRecommended(folders, check);
    co_return true;
}

} // namespace tidemark
