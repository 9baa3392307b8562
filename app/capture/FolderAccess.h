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

/// The folders that the user allowed to be read: kept in the preferences, opened for each capture.
/// The rest of the program sees roots and issues, and no bookmark. Main thread only; whatever
/// touches a folder runs in the background, and one that doesn't answer there counts as
/// unavailable.
class FolderAccess : public Observable {
    Q_OBJECT

public:
    enum class AccessStatus { unchecked, readable, unavailable };
    /// Whether a folder can be read. Called on a background thread.
    using Check = std::function<bool(const std::filesystem::path&)>;
    using PurposesOf = std::function<FolderPurposes(const std::filesystem::path&)>;

    /// Reads the grants; a list that can't be read leaves a `message`. `onlyApproved`: the
    /// process may open nothing but what the user picked (a sandbox). `preferences` outlive this;
    /// those that are read-only are not brought up to date.
    FolderAccess(Preferences& preferences, BookmarkOperations operations, bool onlyApproved = false,
                 std::vector<RecommendedFolder> recommended = RecommendedFolder::current(),
                 FolderCalls folderCalls = FolderCalls());
    ~FolderAccess() override { stopWaiting(); }

    const std::vector<FolderGrant>& grants() const { return grantList; }
    /// Whether a folder is allowed, by its path without links (`canonicalPath`): a recommended
    /// folder may be a link.
    bool isGranted(const std::filesystem::path& canonical) const;
    /// What the last capture or check found at the path of a grant or of a recommended folder.
    AccessStatus accessStatus(const std::string& path) const;
    /// In words, where it found a failure.
    std::optional<std::string> accessFailure(const std::string& path) const;
    /// The last outcome for the user.
    const std::optional<std::string>& message() const { return lastMessage; }
    bool messageIsSuccess() const { return lastMessageIsSuccess; }
    const std::vector<RecommendedFolder>& recommendedFolders() const { return recommended; }
    /// What is tracked, by path.
    std::map<std::string, FolderPurposes> selection() const;

    /// Opens the tracked folders. Whatever can't be opened is an issue and no failure.
    QCoro::Task<FolderCaptureAccess> beginCapture(bool measureStorage);

    /// Allows folders, with links in their paths resolved, for the purposes of both the path as
    /// given and the real one. Throws `Error`, and then allows none of them.
    QCoro::Task<void> add(std::vector<std::filesystem::path> urls, PurposesOf purposes);
    /// Lets the user pick folders, or the one `suggested`, and allows them for `purpose`, or for
    /// what their names suggest. True when that added any; a failure stands in `message`.
    QCoro::Task<bool> choose(std::optional<FolderPurpose> purpose,
                             std::optional<std::filesystem::path> suggested, FolderPicker picker);
    /// A failure of these two stands in `message`.
    void setTracking(FolderPurpose purpose, bool enabled, const Uuid& id);
    void remove(const Uuid& id);

    /// The user is done with choosing folders for the first time.
    void completeSetup();
    /// Checks these and the granted folders and allows those of `folders` that can be read.
    QCoro::Task<void> enableReadableRecommended(std::vector<RecommendedFolder> folders,
                                                Check check = {});
    /// At each start: picks up what the user allowed in the system's own settings, which took a
    /// restart of the program. On a system without such settings, that is nothing. True when a
    /// folder was added.
    QCoro::Task<bool> restoreRecommendedAccessAfterRestart(Check check = {});

    /// Ends what waits for folders at this moment: those that gave no answer are unavailable.
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
    const bool sandboxed;
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
