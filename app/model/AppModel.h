#pragma once

#include "app/base/NotificationCenter.h"
#include "app/capture/CaptureScheduler.h"
#include "app/model/CaptureFlow.h"
#include "app/model/DataFiles.h"
#include "app/model/DigestCard.h"
#include "app/model/FolderSetup.h"
#include "app/model/GrowthScreen.h"
#include "app/model/HistoryImport.h"
#include "app/model/HistoryScreen.h"
#include "app/model/NamedSnapshots.h"
#include "app/model/RecordingSwitch.h"
#include "core/storage/ComponentStorageScanner.h"

namespace tidemark {

/// The controller of the running application. Captures, imports, named snapshots and the user's
/// commands all change one journal, and only one of them may do so at a time; so one object has
/// all of them, and each begins with a token of `Operations`. Each group of commands is a part of
/// its own (`CaptureFlow`, `NamedSnapshots`, `HistoryImport` and others), and the parts share
/// `ModelState`, which has the journal and which views read. The model does not depend on views.
/// Main thread only.
class AppModel : public QObject {
    Q_OBJECT

public:
    /// The constructor's arguments. References must outlive the model.
    struct Setup {
        ModelState& state;
        /// Records everything except captures.
        LiveServices& live;
        Preferences& preferences;
        DataFiles files;
        NotificationCenter& applicationCenter;
        NotificationCenter& workspaceCenter;
        AppClock& clock = AppClock::system();
        BookmarkOperations bookmarks = BookmarkOperations::direct();
        std::filesystem::path home = SystemFacts::homeDirectory();
        /// If absent, the recommended folders for `home`.
        std::optional<std::vector<RecommendedFolder>> recommended{};
        /// If absent, checks once a minute.
        CaptureScheduler::Heartbeat heartbeat{};
        /// If absent, observes this machine.
        Observe observe{};
        /// Checked before anything is written to `files`.
        FolderGuard guard{};
        /// If absent, reads the installation log of this system.
        CollectInstallations collectInstallations{};
        /// False in a program without windows: the events of `history()` stay empty then.
        bool showsHistory = true;
    };

    explicit AppModel(Setup setup);
    ~AppModel() override;

    /// Reads the history and starts recording. Does not throw: when the history can't be read,
    /// `error` is set, nothing is recorded or written, and the scheduler tries again. Does nothing
    /// when it has started or is starting, and after `stopAutomaticCaptures`.
    QCoro::Task<void> start();
    /// Reads the history without recording, for a program that carries out one command. Does not
    /// throw, like `start`.
    QCoro::Task<void> openHistory();
    /// Like `start`, for a program that takes one capture and ends: starts no schedule and no live
    /// services. A live service may do something only once in the lifetime of a history, such as
    /// `MemoryHistoryService::beginFileHistory`, which only a recorder that keeps running may do.
    QCoro::Task<void> startForOneCapture();
    /// Waits until the first reading of the history has ended, with or without success; also when
    /// `start` has not been called yet. Returns at once when the history has been read, when it
    /// can't be read, and when the program is ending.
    QCoro::Task<void> historyRead();
    /// Ends all recording at the end of the program. A running capture is stopped; a running save
    /// is finished.
    void stopAutomaticCaptures();

    QCoro::Task<void> scan(bool allowDuringFolderSetup = false) {
        return flow.scan(allowDuringFolderSetup);
    }
    void cancelCapture() { flow.cancel(); }
    QCoro::Task<bool> commit(Journal journal) { return flow.commit(std::move(journal)); }
    QCoro::Task<void> refreshIfNeeded(Date now) { return flow.refreshIfNeeded(now); }

    /// False when it could not be stored; the schedule is unchanged then.
    bool setCaptureSchedule(CaptureSchedule schedule);
    std::optional<Date> nextAutomaticCapture() const;

    bool canChangeRecording() const { return recording.canChange(); }
    void setRecordingMode(RecordingMode mode) { recording.set(mode); }
    std::string_view recordingStatus() const { return recording.status(); }
    std::string_view menuSymbol() const { return recording.menuSymbol(); }

    void beginFolderManagement() { folderSetup.begin(); }
    /// Closes the folder manager without completing a first choice.
    void cancelFolderManagement() { folderSetup.cancel(); }
    /// Completes the choice in a program that does not record yet. No capture follows.
    void completeFolderManagement() { folderSetup.complete(); }
    QCoro::Task<void> finishFolderManagement() { return folderSetup.finish(); }
    QCoro::Task<void> checkRecommendedAccess(FolderAccess::Check check = {}) {
        return folderSetup.checkRecommendedAccess(std::move(check));
    }
    void openDiskAccessPane(const std::function<bool(const std::string& location)>& open) {
        folderSetup.openDiskAccessPane(open);
    }
    /// Called after each activation of the application.
    QCoro::Task<void> resumePermissionSetupOnActivation(FolderAccess::Check check = {}) {
        return folderSetup.resumeOnActivation(std::move(check));
    }

    /// The merged history, the user's place in it, and what is shown there.
    HistoryScreen& history() { return screen; }
    const HistoryScreen& history() const { return screen; }
    /// Charts of sizes, what grew, and gaps.
    GrowthScreen& growth() { return growthScreen; }
    /// What happened while the user was away.
    DigestCard& digest() { return digestCard; }
    /// The daily sizes of earlier years.
    const StorageHistoryKeeper& dailySizes() const { return sizes; }
    /// When recording began, paused and ended.
    const RecorderRuns& recorderRuns() const { return runs; }
    /// Saving and deleting named snapshots.
    NamedSnapshots& snapshots() { return namedSnapshots; }

    ModelState& state() { return modelState; }
    const ModelState& state() const { return modelState; }
    FolderAccess& folderAccess() { return folders; }
    /// The commands for imports.
    HistoryImport& imports() { return historyImport; }
    CaptureProgress& scanProgress() { return progress; }
    const DataFiles& files() const { return dataFiles; }
    bool isStarting() const { return starting; }

Q_SIGNALS:
    /// The history has been read or can't be read, or the program is ending.
    void readingEnded();

private:
    class Starting;

    static QCoro::Task<void> check(QPointer<AppModel> model);
    bool isEnding() const { return modelState.isEnding; }
    QCoro::Task<bool> open();
    void announceReading();
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
    StorageHistoryKeeper sizes;
    RecorderRuns runs;
    HistoryScreen screen;
    GrowthScreen growthScreen;
    DigestCard digestCard;
    NamedSnapshots namedSnapshots;
    HistoryImport historyImport;
    FolderSetup folderSetup;
    CaptureScheduler scheduler;
    NotificationCenter::Token activation;
    bool starting = false;
    TaskScope tasks;
};

} // namespace tidemark
