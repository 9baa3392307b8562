// Opens and allows folders in the background and applies the results on the main thread. A grant
// may be changed or removed in between.

#include "app/base/Background.h"
#include "app/capture/FolderAccess.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Error.h"
#include "core/base/Text.h"
#include "core/capture/StandardRoots.h"

#include <QPointer>
#include <QScopeGuard>
#include <algorithm>
#include <iterator>
#include <map>

namespace tidemark {

namespace fs = std::filesystem;
using Kind = BackgroundItem::Kind;

namespace {

FolderPurposes effectivePurposes(const FolderGrant& grant, bool measureStorage) {
    auto purposes = grant.purposes;
    if (!measureStorage)
        purposes.erase(FolderPurpose::storage);
    return purposes;
}

/// The roots of one capture, or those of one folder and purpose.
struct Roots {
    std::vector<ApplicationRoot> applications{};
    std::vector<BackgroundRoot> background{};
    std::vector<fs::path> storage{};

    /// Blocks, since it resolves links to find out whether the folder represents all standard roots
    /// of its purpose.
    static Roots of(const fs::path& url, FolderPurpose purpose) {
        const auto places = StandardRoots::Places::current();
        switch (purpose) {
        case FolderPurpose::applications:
            return {.applications = StandardRoots::applicationsFor(url, places)};
        case FolderPurpose::launchAgents:
            return {.background = StandardRoots::backgroundFor(url, Kind::agent, places)};
        case FolderPurpose::launchDaemons:
            return {.background = StandardRoots::backgroundFor(url, Kind::daemon, places)};
        case FolderPurpose::storage:
            return {.storage = {url}};
        }
        return {};
    }

    void add(const Roots& more) {
        std::ranges::copy(more.applications, std::back_inserter(applications));
        std::ranges::copy(more.background, std::back_inserter(background));
        std::ranges::copy(more.storage, std::back_inserter(storage));
    }
};

/// Whether the folder of a grant represents all standard roots of a purpose. It may then be missing
/// itself: it counts as empty, and the others are read.
bool representsOthers(const FolderGrant& grant) {
    const auto places = StandardRoots::Places::current();
    const fs::path folder = grant.path;
    return (grant.purposes.contains(FolderPurpose::applications)
            && StandardRoots::representsApplications(folder, places))
           || (grant.purposes.contains(FolderPurpose::launchAgents)
               && StandardRoots::representsBackground(folder, Kind::agent, places))
           || (grant.purposes.contains(FolderPurpose::launchDaemons)
               && StandardRoots::representsBackground(folder, Kind::daemon, places));
}

bool isMissing(const fs::path& folder) {
    std::error_code error;
    return fs::symlink_status(folder, error).type() == fs::file_type::not_found;
}

/// A folder to be allowed.
struct Bookmarked {
    fs::path url;
    Data bookmark;
    /// The paths as given: the name of a link suggests its purpose better than that of its target.
    std::vector<fs::path> names{};

    FolderPurposes united(const FolderAccess::PurposesOf& purposesOf) const {
        auto all = purposesOf(url);
        for (const auto& name : names)
            all.merge(purposesOf(name));
        return all;
    }
};

Bookmarked bookmarked(const BookmarkOperations& operations, const fs::path& given) {
    const auto url = canonicalPath(given);
    const bool started = operations.start(url);
    const auto stop = qScopeGuard([&] {
        if (started)
            operations.stop(url);
    });
    return {url, operations.create(url), {given}};
}

/// Creates bookmarks of folders, one for each real path.
std::vector<Bookmarked> bookmarked(const BookmarkOperations& operations, const FolderCalls& calls,
                                   const std::vector<fs::path>& urls, const std::stop_token& stop) {
    std::vector<Bookmarked> made;
    for (const auto& given : urls) {
        const auto make = [operations, given] { return bookmarked(operations, given); };
        auto one = calls.answer(given, make, stop);
        if (!one)
            throw Error(unansweredFolder);
        const auto same = std::ranges::find(made, one->url, &Bookmarked::url);
        if (same == made.end())
            made.push_back(*std::move(one));
        else
            same->names.push_back(given);
    }
    return made;
}

} // namespace

/// The result of opening one grant.
struct FolderAccess::Opened {
    FolderGrant grant;
    /// Absent when the bookmark can't be resolved.
    std::optional<fs::path> url;
    /// Why access to the folder could not be started.
    std::optional<std::string> failure;
    /// The new bookmark, if the old one is stale.
    std::optional<Bookmarked> fresh;
    /// What is read for each purpose of the grant.
    std::map<FolderPurpose, Roots> roots{};
    bool isStarted = false;

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
        if (result.failure && isMissing(resolved.url) && representsOthers(grant))
            result.failure.reset();
        else if (!result.failure)
            result.start(operations, resolved);
        if (result.failure)
            return result;
        for (const FolderPurpose purpose : grant.purposes)
            result.roots.emplace(purpose, Roots::of(resolved.url, purpose));
        return result;
    }

    void start(const BookmarkOperations& operations, const BookmarkOperations::Resolved& resolved) {
        isStarted = operations.start(resolved.url);
        if (!isStarted) {
            failure = directoryAccessFailure(resolved.url).value_or(unansweredFolder);
            return;
        }
        try {
            if (resolved.stale)
                fresh = Bookmarked{standardizedPath(resolved.url), operations.create(resolved.url)};
        } catch (const Error&) {
            // Keep the old bookmark, which also resolves to this path.
        }
    }

    /// Opens a grant as the other `open` does, within the time limit of `calls`.
    static Opened open(const BookmarkOperations& operations, const FolderCalls& calls,
                       const FolderGrant& grant, const std::stop_token& stop) {
        const auto attempt = [operations, grant] { return open(operations, grant); };
        const auto close = [operations](const Opened& late) {
            if (late.isStarted)
                operations.stop(*late.url);
        };
        return calls.answer(grant.path, attempt, stop, close)
            .value_or(Opened{grant, grant.path, unansweredFolder, {}});
    }
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
    const auto work = [bookmarks = operations, asked = calls, wanted](const std::stop_token& stop) {
        std::vector<Opened> all;
        for (const auto& grant : wanted)
            all.push_back(Opened::open(bookmarks, asked, grant, stop));
        return all;
    };
    const std::vector<Opened> all = co_await runInBackground(work, waits.get_token());

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
            if (opened.isStarted)
                operations.stop(*opened.url);
            continue;
        }
        note(opened, issues);
        if (!opened.isOpen())
            continue;
        if (opened.isStarted)
            urls.push_back(*opened.url);
        if (opened.fresh && grant->bookmark == opened.grant.bookmark) {
            grant->bookmark = opened.fresh->bookmark;
            grant->path = textFromBytes(opened.fresh->url.native());
            statuses[grant->path] = AccessStatus::readable;
            failures.erase(grant->path);
            isChanged = true;
        }
        for (const auto purpose : purposes)
            if (const auto found = opened.roots.find(purpose); found != opened.roots.end())
                roots.add(found->second);
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
    noteChange();
    ObservationOptions options(std::move(roots.applications), std::move(roots.background),
                               std::move(roots.storage));
    co_return FolderCaptureAccess(std::move(options), std::move(issues), std::move(urls),
                                  operations.stop);
}

QCoro::Task<void> FolderAccess::add(std::vector<fs::path> urls, PurposesOf purposes) {
    const auto hold = tasks.hold();
    const auto work = [bookmarks = operations, asked = calls, urls](const std::stop_token& stop) {
        return bookmarked(bookmarks, asked, urls, stop);
    };
    const std::vector<Bookmarked> made = co_await runInBackground(work, waits.get_token());

    auto updated = grantList;
    for (const auto& folder : made) {
        const std::string path = textFromBytes(folder.url.native());
        auto grant = std::ranges::find(updated, path, &FolderGrant::path);
        if (grant == updated.end()) {
            const auto suggested = folder.united(FolderGrant::suggestedPurposes);
            FolderGrant fresh{Uuid::random(), path, {}, {}, suggested};
            grant = updated.insert(updated.end(), std::move(fresh));
        }
        grant->bookmark = folder.bookmark;
        grant->purposes.merge(folder.united(purposes));
        grant->availablePurposes.insert(grant->purposes.begin(), grant->purposes.end());
    }
    persist(std::move(updated));
    report(std::nullopt);
}

QCoro::Task<bool> FolderAccess::choose(std::optional<FolderPurpose> purpose,
                                       std::optional<fs::path> suggested, FolderPicker picker) {
    // Not a hold, since the panel may stay open for any time.
    const QPointer<FolderAccess> self(this);
    const auto request = FolderRequest::of(suggested);
    std::vector<fs::path> urls = co_await picker(request);
    if (!self || urls.empty())
        co_return false;
    if (!std::ranges::all_of(urls, [&](const fs::path& url) { return request.allows(url); })) {
        report("Please select " + textFromBytes(lastPathComponent(suggested->native()))
               + ", or deselect that folder from setup. No access was saved for the different "
                 "folder.");
        co_return false;
    }
    PurposesOf purposesOf = [purpose](const fs::path& path) {
        return purpose ? FolderPurposes{*purpose} : FolderGrant::suggestedPurposes(path);
    };
    try {
        co_await add(std::move(urls), std::move(purposesOf));
    } catch (const Error& error) {
        report("Couldn’t remember the selected folders. No new folders were saved. "
               + std::string(error.what()));
        co_return false;
    }
    co_return true;
}

} // namespace tidemark
