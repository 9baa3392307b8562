#include "app/model/AppModel.h"

#include "app/base/Background.h"
#include "app/model/Log.h"
#include "app/model/MachineObservation.h"
#include "app/preferences/PreferenceKeys.h"
#include "core/activity/SystemActivityStore.h"
#include "core/base/Clock.h"

#include <QCoroSignal>

namespace tidemark {

namespace {

constexpr std::int64_t entriesPerSlice = 1'000'000;

CollectInstallations systemInstallations() {
    return [](Date now) { return InstallationHistory::collect(now); };
}

} // namespace

AppModel::AppModel(Setup setup)
    : modelState(setup.state), live(setup.live), preferences(setup.preferences), clock(setup.clock),
      dataFiles(std::move(setup.files)),
      folders(preferences, std::move(setup.bookmarks),
              setup.recommended ? *std::move(setup.recommended)
                                : RecommendedFolder::current(setup.home)),
      journalFile(dataFiles, setup.guard),
      scanner(dataFiles.storageMeasurements(), entriesPerSlice, Clock::system(), setup.guard),
      observations({.folders = folders,
                    .preferences = preferences,
                    .clock = clock,
                    .progress = progress,
                    .tasks = tasks,
                    .home = std::move(setup.home),
                    .observe = setup.observe ? std::move(setup.observe)
                                             : machineObservation(scanner, progress)}),
      flow(modelState, observations, journalFile, preferences, clock, tasks),
      recording(modelState, observations, flow, live, preferences, tasks),
      sizes(modelState, dataFiles, setup.guard, tasks),
      runs(modelState, dataFiles.recorderRuns(), setup.guard, clock, tasks),
      screen(modelState, preferences, clock, tasks, setup.showsHistory),
      growthScreen(modelState, sizes, runs, clock, tasks),
      digestCard(growthScreen, screen, modelState, preferences, clock),
      namedSnapshots({.state = modelState,
                      .observations = observations,
                      .flow = flow,
                      .file = journalFile,
                      .screen = screen,
                      .preferences = preferences,
                      .tasks = tasks}),
      historyImport({.state = modelState,
                     .flow = flow,
                     .file = journalFile,
                     .screen = screen,
                     .clock = clock,
                     .tasks = tasks,
                     .collect = setup.collectInstallations ? std::move(setup.collectInstallations)
                                                           : systemInstallations()}),
      folderSetup(modelState, flow, historyImport, folders, preferences, tasks),
      scheduler(setup.applicationCenter, setup.workspaceCenter,
                setup.heartbeat ? std::move(setup.heartbeat)
                                : CaptureScheduler::backgroundHeartbeat(clock)) {
    // The user may have changed folder access in the system's settings.
    activation = setup.applicationCenter.observe(notification::applicationDidBecomeActive, [this] {
        tasks.start(resumePermissionSetupOnActivation());
    });
}

AppModel::~AppModel() {
    modelState.isEnding = true;
    Q_EMIT readingEnded();
    activation.remove();
    scheduler.stop();
    folders.stopWaiting();
    tasks.drain();
}

/// Marks a start as running. The kinds of start exclude each other, and only one of them succeeds
/// in the lifetime of the program.
class AppModel::Starting {
public:
    explicit Starting(AppModel& model) : hold(model.tasks.hold()), starting(model.starting) {
        mayStart = !starting && !model.modelState.loaded() && !model.tasks.isStopping()
                   && !model.isEnding();
        starting = starting || mayStart;
    }
    ~Starting() {
        if (mayStart)
            starting = false;
    }
    Starting(const Starting&) = delete;
    Starting& operator=(const Starting&) = delete;

    explicit operator bool() const { return mayStart; }

private:
    const TaskScope::Hold hold;
    bool& starting;
    bool mayStart;
};

QCoro::Task<void> AppModel::check(QPointer<AppModel> model) {
    if (!model)
        co_return;
    co_await model->start();
    if (model && !model->starting && !model->isEnding())
        co_await model->refreshIfNeeded(model->clock.now());
}

QCoro::Task<void> AppModel::start() {
    const Starting started(*this);
    if (!started)
        co_return;
    qCInfo(capturesLog, "Starting observation service");
    scheduler.start([model = QPointer(this)] { return check(model); });
    const bool isOpen = co_await open();
    if (!isOpen)
        co_return;
    co_await runs.open(true);
    if (isEnding())
        co_return;
    co_await startLiveServices();
    co_await catchUp();
}

QCoro::Task<void> AppModel::startForOneCapture() {
    const Starting started(*this);
    if (!started)
        co_return;
    const bool isOpen = co_await open();
    if (isOpen)
        co_await catchUp();
}

QCoro::Task<void> AppModel::openHistory() {
    const Starting started(*this);
    if (!started)
        co_return;
    const bool isOpen = co_await open();
    if (isOpen)
        co_await runs.open(false);
}

/// Reads the history. False when it can't be read or the program ends meanwhile.
QCoro::Task<bool> AppModel::open() {
    std::string failure;
    try {
        co_await load();
        if (isEnding())
            co_return false;
        modelState.error = std::nullopt;
        modelState.setLoaded();
        recording.restore();
        announceReading();
        co_return true;
    } catch (const std::exception& error) {
        failure = error.what();
    }
    qCCritical(capturesLog, "Observation startup failed: %s", failure.c_str());
    modelState.error = "Tidemark couldn’t read its history. Your existing file has not been "
                       "overwritten. "
                       + failure;
    announceReading();
    co_return false;
}

/// Emits `readingEnded` from the event loop, so that a coroutine that waits for it does not run in
/// the middle of the start.
void AppModel::announceReading() {
    QMetaObject::invokeMethod(this, &AppModel::readingEnded, Qt::QueuedConnection);
}

QCoro::Task<void> AppModel::historyRead() {
    const auto hold = tasks.hold();
    if (!modelState.loaded() && !*modelState.error && !isEnding())
        co_await qCoro(this, &AppModel::readingEnded);
}

QCoro::Task<void> AppModel::load() {
    Journal journal = co_await journalFile.load();
    modelState.setJournal(std::move(journal));
    co_await live.loadMemory();
    co_await sizes.open();
}

QCoro::Task<void> AppModel::startLiveServices() {
    if (!modelState.canRecord()) {
        co_await showStoredActivity();
    } else {
        live.startActivityMonitors();
        live.startMemory();
    }
}

/// When access to folders was just restored, imports the installation logs if that was never done,
/// and takes a capture. Then, if the user still has to choose folders, shows the choice; otherwise
/// imports the logs in the same way, and takes a capture if one is due.
QCoro::Task<void> AppModel::catchUp() {
    const bool restored = co_await folders.restoreRecommendedAccessAfterRestart();
    if (isEnding())
        co_return;
    if (restored) {
        preferences.note(preferenceKeys::diskAccessCheckRequested.name, false);
        co_await historyImport.importInitialHistoryIfNeeded();
        co_await scan(false);
        if (isEnding())
            co_return;
    }

    const bool isSetUp = read(preferences, preferenceKeys::folderSetupCompleted)
                         && !read(preferences, preferenceKeys::diskAccessSetupPending);
    if (!isSetUp) {
        folderSetup.present();
        co_return;
    }
    co_await historyImport.importInitialHistoryIfNeeded();
    if (isEnding())
        co_return;
    if (!modelState.latest())
        co_await scan(false);
    else
        co_await refreshIfNeeded(clock.now());
}

QCoro::Task<void> AppModel::showStoredActivity() {
    const auto load = [file = dataFiles.systemActivity()](const std::stop_token&) {
        return SystemActivityStore::read(file);
    };
    try {
        auto records = co_await runInBackground(load);
        // If recording was resumed meanwhile, the monitors have newer records.
        if (!isEnding() && !modelState.canRecord())
            modelState.setSystemActivity(std::move(records));
    } catch (const std::exception& error) {
        // Not an error of the recorder: while recording is paused, it only shows this file.
        qCDebug(capturesLog, "The stored activity can't be shown: %s", error.what());
    }
}

void AppModel::stopAutomaticCaptures() {
    qCInfo(capturesLog, "Stopping observation service");
    modelState.isEnding = true;
    Q_EMIT readingEnded();
    scheduler.stop();
    observations.abandon();
    folders.stopWaiting();
    live.stop();
    runs.close();
}

bool AppModel::setCaptureSchedule(CaptureSchedule schedule) {
    return preferences.set(preferenceKeys::captureSchedule.name, std::string(rawValue(schedule)));
}

std::optional<Date> AppModel::nextAutomaticCapture() const {
    return nextCapture(modelState.captureSchedule(), modelState.lastCapture());
}

} // namespace tidemark
