#pragma once

#include "app/base/Observable.h"
#include "app/base/TaskScope.h"
#include "app/capture/BookmarkOperations.h"
#include "app/capture/FolderCalls.h"
#include "app/capture/FolderCaptureAccess.h"
#include "app/capture/FolderGrant.h"
#include "app/capture/FolderRequest.h"
#include "app/capture/RecommendedFolder.h"
#include "app/preferences/Preferences.h"

#include <map>
#include <optional>

namespace tidemark {

/// The folders that the user allowed the program to read. They are stored in the preferences and
/// opened for each capture; the rest of the program sees only roots and issues, not bookmarks. Main
/// thread only. Everything that accesses a folder runs in the background, and a folder that does
/// not respond counts as unavailable or, in `add`, makes the call fail.
class FolderAccess : public Observable {
    Q_OBJECT

public:
    enum class AccessStatus { unchecked, readable, unavailable };
    /// Returns whether a folder can be read. Called on a background thread.
    using Check = std::function<bool(const std::filesystem::path&)>;
    using PurposesOf = std::function<FolderPurposes(const std::filesystem::path&)>;

    /// Reads the grants; when they can't be read, there are none and `message` is set. Migrates
    /// those of earlier releases; when that can't be saved, it is repeated at the next start.
    /// `preferences` must outlive this object; read-only ones are not changed.
    FolderAccess(Preferences& preferences, BookmarkOperations operations,
                 std::vector<RecommendedFolder> recommended = RecommendedFolder::current(),
                 FolderCalls calls = FolderCalls());
    ~FolderAccess() override { stopWaiting(); }

    const std::vector<FolderGrant>& grants() const { return grantList; }
    /// Whether a folder is allowed. `canonical` is its path without links (`canonicalPath`),
    /// because a recommended folder may be a link.
    bool isGranted(const std::filesystem::path& canonical) const;
    /// The result of the last capture or check for the path of a grant or of a recommended folder.
    AccessStatus accessStatus(const std::string& path) const;
    /// Why the folder could not be opened by that capture or check, as a sentence; absent when it
    /// could, and when it has not been checked.
    std::optional<std::string> accessFailure(const std::string& path) const;
    /// The result of the last action, for the user.
    const std::optional<std::string>& message() const { return lastMessage; }
    bool messageIsSuccess() const { return lastMessageIsSuccess; }
    const std::vector<RecommendedFolder>& recommendedFolders() const { return recommended; }
    /// The tracked purposes, by path.
    std::map<std::string, FolderPurposes> selection() const;

    /// Opens the tracked folders; if `measureStorage` is false, only those that are tracked for
    /// something else than their storage, too. A folder that can't be opened becomes an issue.
    QCoro::Task<FolderCaptureAccess> beginCapture(bool measureStorage);

    /// Allows folders, with links in their paths resolved, for the purposes of both the given and
    /// the real path. Throws `Error`; none of them is allowed then.
    QCoro::Task<void> add(std::vector<std::filesystem::path> urls, PurposesOf purposes);
    /// Lets the user pick folders, or the `suggested` one, and allows them for `purpose`, or for
    /// the purposes that their names suggest. True when any were added; sets `message` on failure.
    QCoro::Task<bool> choose(std::optional<FolderPurpose> purpose,
                             std::optional<std::filesystem::path> suggested, FolderPicker picker);
    /// `setTracking` and `remove` clear `message` on success and set it on failure.
    void setTracking(FolderPurpose purpose, bool enabled, const Uuid& id);
    void remove(const Uuid& id);

    /// Records that the user has chosen folders for the first time.
    void completeSetup();
    /// Checks `folders` and the granted folders, and allows those of `folders` that can be read.
    /// Sets `message` to the result.
    QCoro::Task<void> enableReadableRecommended(std::vector<RecommendedFolder> folders,
                                                Check check = {});
    /// Called at each start: allows the folders that became readable by a change in the system's
    /// settings, which requires a restart of the program. Does nothing on systems without such
    /// settings. While the set-up is pending, true when the paths of the grants have changed; after
    /// it, true when a protected folder without a grant has become readable, even if the new grant
    /// could not be saved.
    QCoro::Task<bool> restoreRecommendedAccessAfterRestart(Check check = {});

    /// Stops waiting for folders. Those that have not responded yet count as unavailable.
    void stopWaiting();

private:
    struct Opened;
    struct Tested;
    struct Checking;

    void load();
    void persist(std::vector<FolderGrant> updated);
    void report(std::optional<std::string> text, bool success = false);
    const FolderGrant* find(const Uuid& id) const;
    void note(const Opened& opened, std::vector<std::string>& issues);
    void note(const std::vector<Tested>& tested);
    QCoro::Task<void> noteRemovedLink(std::string path);
    void noteRemoved(const std::vector<std::string>& paths);
    std::vector<RecommendedFolder> candidates() const;

    Preferences& preferences;
    const BookmarkOperations operations;
    const std::vector<RecommendedFolder> recommended;
    const FolderCalls calls;
    std::vector<FolderGrant> grantList;
    std::map<std::string, AccessStatus> statuses;
    std::map<std::string, std::string> failures;
    std::optional<std::string> lastMessage;
    bool lastMessageIsSuccess = false;
    std::stop_source waits;
    TaskScope tasks;
};

} // namespace tidemark
