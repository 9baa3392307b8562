#pragma once

#include "app/base/TaskScope.h"
#include "app/capture/BookmarkOperations.h"
#include "app/capture/FolderCaptureAccess.h"
#include "app/capture/FolderGrant.h"
#include "app/capture/RecommendedFolder.h"
#include "app/preferences/Preferences.h"

#include <QObject>
#include <map>
#include <optional>

namespace tidemark {

/// The folders that the user allowed to be read: kept in the preferences, opened for each capture.
/// The rest of the program sees roots and issues, and no bookmark. Main thread only; whatever
/// touches a folder runs in the background, since a network volume may not answer.
class FolderAccess : public QObject {
    Q_OBJECT

public:
    enum class AccessStatus { unchecked, readable, unavailable };
    /// Whether a folder can be read. Called on a background thread.
    using Check = std::function<bool(const std::filesystem::path&)>;
    using PurposesOf = std::function<FolderPurposes(const std::filesystem::path&)>;

    /// Reads the grants; a list that can't be read leaves a `message`. `onlyApproved`: the
    /// process may open nothing but what the user picked (a sandbox). `preferences` outlive this.
    FolderAccess(Preferences& preferences, BookmarkOperations operations, bool onlyApproved = false,
                 std::vector<RecommendedFolder> recommended = RecommendedFolder::current());

    const std::vector<FolderGrant>& grants() const { return grantList; }
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

    /// Allows folders, with links in their paths resolved, for these purposes. Throws `Error`, and
    /// then allows none of them.
    QCoro::Task<void> add(std::vector<std::filesystem::path> urls, PurposesOf purposes);
    /// A failure of these two stands in `message`.
    void setTracking(FolderPurpose purpose, bool enabled, const Uuid& id);
    void remove(const Uuid& id);

    /// The user is done with choosing folders for the first time.
    void completeSetup();
    /// Checks these and the granted folders and allows those of `folders` that can be read.
    QCoro::Task<void> enableReadableRecommended(std::vector<RecommendedFolder> folders,
                                                Check check = {});
    /// At each start: picks up what the user allowed in the system's own settings, which took a
    /// restart of the program. True when that brought a folder.
    QCoro::Task<bool> restoreRecommendedAccessAfterRestart(Check check = {});

Q_SIGNALS:
    void changed();

private:
    struct Opened;
    struct Tested;

    void load();
    void persist(std::vector<FolderGrant> updated);
    void report(std::optional<std::string> text, bool success = false);
    const FolderGrant* find(const Uuid& id) const;
    bool isGranted(const std::filesystem::path& path) const;
    void note(const Opened& opened, std::vector<std::string>& issues);
    void note(const std::vector<Tested>& tested);
    std::vector<RecommendedFolder> candidates() const;

    Preferences& preferences;
    const BookmarkOperations operations;
    const bool sandboxed;
    const std::vector<RecommendedFolder> recommended;
    std::vector<FolderGrant> grantList;
    std::map<std::string, AccessStatus> statuses;
    std::map<std::string, std::string> failures;
    std::optional<std::string> lastMessage;
    bool lastMessageIsSuccess = false;
    TaskScope tasks;
};

} // namespace tidemark
