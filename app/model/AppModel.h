#pragma once

#include "app/base/NotificationCenter.h"
#include "app/capture/CaptureScheduler.h"
#include "app/model/AppDataLocation.h"
#include "app/model/CaptureFlow.h"
#include "app/model/FolderSetup.h"
#include "app/model/HistoryImport.h"
#include "app/model/HistoryScreen.h"
#include "app/model/NamedSnapshots.h"
#include "app/model/RecordingSwitch.h"
#include "core/storage/ComponentStorageScanner.h"

namespace tidemark {

/// The one controller of the running application: it owns the journal and the services, and has
/// the commands that change them. It knows no view. Main thread only.
class AppModel : public QObject {
    Q_OBJECT

public:
    /// What it is built with. All that is given by reference outlives it.
    struct Setup {
        ModelState& state;
        /// What records besides captures.
        LiveServices& live;
        Preferences& preferences;
        DataFiles files;
        NotificationCenter& applicationCenter;
        NotificationCenter& workspaceCenter;
        AppClock& clock = AppClock::system();
        /// The process may open nothing but what the user picked.
        bool sandboxed = false;
        BookmarkOperations bookmarks = BookmarkOperations::direct();
        std::filesystem::path home = SystemFacts::homeDirectory();
        /// Of `home`, when absent.
        std::optional<std::vector<RecommendedFolder>> recommended{};
        /// Once a minute, when absent.
        CaptureScheduler::Heartbeat heartbeat{};
        /// The machine itself, when absent.
        Observe observe{};
        /// Asked before anything is written below `files`.
        FolderGuard guard{};
        /// The memory of this system, when absent.
        CollectInstallations collectInstallations{};
    };

    explicit AppModel(Setup setup);
    ~AppModel() override;

    /// Reads the history and starts recording. Never fails: when the history can't be read,
    /// `error` says so, nothing is recorded or written, and the scheduler tries again. Does
    /// nothing when it has started or is starting, and after `stopAutomaticCaptures`.
    QCoro::Task<void> start();
    /// Reads the history and records nothing, for a program that does one thing to it. Never
    /// fails, as `start`.
    QCoro::Task<void> openHistory();
    /// As `start`, for a program that captures once and ends: no schedule runs, and no live
    /// service is started, so that nothing they do once in the life of a history is spent here.
    QCoro::Task<void> startForOneCapture();
    /// Ends all recording, at the end of the program. A capture that runs is cut short; what is
    /// being saved is finished.
    void stopAutomaticCaptures();

    QCoro::Task<void> scan(bool allowDuringFolderSetup = false) {
        return flow.scan(allowDuringFolderSetup);
    }
    QCoro::Task<bool> commit(Journal journal) { return flow.commit(std::move(journal)); }
    QCoro::Task<void> refreshIfNeeded(Date now) { return flow.refreshIfNeeded(now); }

    /// False when it could not be stored: then the schedule is as before.
    bool setCaptureSchedule(CaptureSchedule schedule);
    std::optional<Date> nextAutomaticCapture() const;

    bool canChangeRecording() const { return recording.canChange(); }
    void setRecordingMode(RecordingMode mode) { recording.set(mode); }
    std::string_view recordingStatus() const { return recording.status(); }
    std::string_view menuSymbol() const { return recording.menuSymbol(); }

    void beginFolderManagement() { folderSetup.begin(); }
    /// Leaves the folders as they are now, without having finished a first choice.
    void cancelFolderManagement() { folderSetup.cancel(); }
    /// Finishes the choice before `start`, so that no capture follows by itself.
    void completeFolderManagement() { folderSetup.complete(); }
    QCoro::Task<void> finishFolderManagement() { return folderSetup.finish(); }
    QCoro::Task<void> checkRecommendedAccess(FolderAccess::Check check = {}) {
        return folderSetup.checkRecommendedAccess(std::move(check));
    }
    void openDiskAccessPane(const std::function<bool(const std::string& location)>& open) {
        folderSetup.openDiskAccessPane(open);
    }
    /// Follows each activation of the application.
    QCoro::Task<void> resumePermissionSetupOnActivation(FolderAccess::Check check = {}) {
        return folderSetup.resumeOnActivation(std::move(check));
    }

    /// The merged history, where the user stands in it, and what is shown there.
    HistoryScreen& history() { return screen; }
    const HistoryScreen& history() const { return screen; }
    /// Saving and deleting named snapshots.
    NamedSnapshots& snapshots() { return namedSnapshots; }

    ModelState& state() { return modelState; }
    const ModelState& state() const { return modelState; }
    FolderAccess& folderAccess() { return folders; }
    /// Its commands are commands of this controller.
    HistoryImport& imports() { return historyImport; }
    CaptureProgress& scanProgress() { return progress; }
    const DataFiles& files() const { return dataFiles; }
    bool isStarting() const { return starting; }

private:
    class Starting;

    static QCoro::Task<void> check(QPointer<AppModel> model);
    bool isEnding() const { return modelState.isEnding; }
    QCoro::Task<bool> open();
    QCoro::Task<void> load();
    QCoro::Task<void> startLiveServices();
    QCoro::Task<void> catchUp();
    QCoro::Task<void> showStoredActivity();

    ModelState& modelState;
    LiveServices& live;
    Preferences& preferences;
    AppClock& clock;
    const DataFiles dataFiles;
    CaptureProgress progress;
    FolderAccess folders;
    JournalFile journalFile;
    ComponentStorageScanner scanner;
    ObservationFlow observations;
    CaptureFlow flow;
    RecordingSwitch recording;
    HistoryScreen screen;
    NamedSnapshots namedSnapshots;
    HistoryImport historyImport;
    FolderSetup folderSetup;
    CaptureScheduler scheduler;
    NotificationCenter::Token activation;
    bool starting = false;
    TaskScope tasks;
};

} // namespace tidemark
