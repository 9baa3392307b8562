#include "app/model/AppModel.h"

#include "app/base/Background.h"
#include "app/model/Log.h"
#include "app/model/MachineObservation.h"
#include "app/preferences/PreferenceKeys.h"
#include "core/activity/SystemActivityStore.h"
#include "core/base/Clock.h"

#include <QScopeGuard>

namespace tidemark {

namespace {

constexpr std::int64_t entriesPerSlice = 1'000'000;

CollectInstallations systemInstallations() {
    return [](Date now) { return InstallationHistory::collect(now); };
}

} // namespace

AppModel::AppModel(Setup setup)
    : dataFiles(std::move(setup.files)),
      modelState(setup.preferences, setup.sandboxed, setup.legacyStorageEnabled, setup.clock.now()),
      folders(setup.preferences, std::move(setup.bookmarks), setup.sandboxed,
              setup.recommended ? *std::move(setup.recommended)
                                : RecommendedFolder::current(setup.home)),
      store(dataFiles.journal(), dataFiles.legacyJournal, dataFiles.upgradeBackup(), setup.guard),
      scanner(dataFiles.storageMeasurements(), entriesPerSlice, Clock::system(), setup.guard),
      services{setup.preferences,
               setup.clock,
               folders,
               store,
               journalThread,
               tasks,
               std::move(setup.home),
               setup.observe ? std::move(setup.observe) : machineObservation(scanner, progress),
               std::move(setup.beginActivity),
               nullptr,
               {}},
      flow(modelState, progress, services), recording(modelState, flow, services),
      folderSetup(modelState, flow, services),
      screen(modelState, setup.preferences, setup.clock, tasks),
      namedSnapshots(modelState, flow, screen, services),
      historyImport(modelState, flow, services,
                    setup.collectInstallations ? std::move(setup.collectInstallations)
                                               : systemInstallations()),
      scheduler(setup.applicationCenter, setup.workspaceCenter,
                setup.heartbeat ? std::move(setup.heartbeat)
                                : CaptureScheduler::backgroundHeartbeat(setup.clock)) {
    services.importInitialHistory = [this] { return historyImport.importInitialHistoryIfNeeded(); };
    historyImport.setShowImported([this] { screen.showImported(); });
    // The user may come back from the system's own settings of access.
    activation = setup.applicationCenter.observe(notification::applicationDidBecomeActive, [this] {
        tasks.start(resumePermissionSetupOnActivation());
    });
}

AppModel::~AppModel() {
    modelState.isEnding = true;
    activation.remove();
    scheduler.stop();
    folders.stopWaiting();
    tasks.drain();
}

QCoro::Task<void> AppModel::check(QPointer<AppModel> model) {
    if (!model)
        co_return;
    co_await model->start();
    if (model && !model->starting && !model->isEnding())
        co_await model->refreshIfNeeded(model->services.clock.now());
}

QCoro::Task<void> AppModel::start() {
    const auto hold = tasks.hold();
    if (modelState.loaded() || starting || tasks.isStopping() || isEnding())
        co_return;
    starting = true;
    const auto done = qScopeGuard([this] { starting = false; });
    qCInfo(capturesLog, "Starting observation service");
    scheduler.start([model = QPointer(this)] { return check(model); });
    const bool isLoaded = co_await load();
    if (!isLoaded || isEnding())
        co_return;
    showHistory();
    co_await startLiveServices();
    co_await catchUp();
}

QCoro::Task<void> AppModel::startForOneCapture() {
    const auto hold = tasks.hold();
    if (modelState.loaded() || starting || tasks.isStopping())
        co_return;
    starting = true;
    const auto done = qScopeGuard([this] { starting = false; });
    const bool isLoaded = co_await load();
    if (!isLoaded || isEnding())
        co_return;
    showHistory();
    co_await catchUp();
}

QCoro::Task<void> AppModel::openHistory() {
    const auto hold = tasks.hold();
    if (modelState.loaded() || starting || tasks.isStopping())
        co_return;
    starting = true;
    const auto done = qScopeGuard([this] { starting = false; });
    const bool isLoaded = co_await load();
    if (isLoaded)
        showHistory();
}

void AppModel::showHistory() {
    modelState.error = std::nullopt;
    modelState.setLoaded();
    recording.restore();
}

QCoro::Task<bool> AppModel::load() {
    std::string failure;
    try {
        const auto read = [this](const std::stop_token&) { return store.load(); };
        // Whoever started the program waits for its history, however busy the machine is.
        Journal journal =
            co_await runInBackground(read, {}, WorkPriority::userInitiated, &journalThread);
        modelState.setJournal(std::move(journal));
        if (services.live)
            co_await services.live->loadMemory();
        co_return true;
    } catch (const std::exception& error) {
        failure = error.what();
    }
    qCCritical(capturesLog, "Observation startup failed: %s", failure.c_str());
    modelState.error = "Tidemark couldn’t read its history. Your existing file has not been "
                       "overwritten. "
                       + failure;
    co_return false;
}

QCoro::Task<void> AppModel::startLiveServices() {
    if (!modelState.canRecord()) {
        co_await showStoredActivity();
    } else if (services.live) {
        services.live->startActivityMonitors();
        services.live->startMemory();
    }
}

/// Captures what should have been captured by now, unless the user still has to choose folders.
QCoro::Task<void> AppModel::catchUp() {
    const bool restored = co_await folders.restoreRecommendedAccessAfterRestart();
    if (isEnding())
        co_return;
    if (restored) {
        services.preferences.note(preference::diskAccessCheckRequested.name, false);
        co_await importInitialHistory();
        co_await scan(false);
        if (isEnding())
            co_return;
    }

    const bool isSetUp = read(services.preferences, preference::folderSetupCompleted)
                         && !read(services.preferences, preference::diskAccessSetupPending);
    if (!isSetUp) {
        folderSetup.present();
        co_return;
    }
    co_await importInitialHistory();
    if (isEnding())
        co_return;
    if (!modelState.latest())
        co_await scan(false);
    else
        co_await refreshIfNeeded(services.clock.now());
}

QCoro::Task<void> AppModel::showStoredActivity() {
    const auto load = [file = dataFiles.systemActivity()](const std::stop_token&) {
        return SystemActivityStore::read(file);
    };
    try {
        auto records = co_await runInBackground(load);
        // Resumed in the meantime: then the monitors know better.
        if (!isEnding() && !modelState.canRecord())
            modelState.setSystemActivity(std::move(records));
    } catch (const std::exception& error) {
        // Only shown, and never written, while recording is paused.
        qCDebug(capturesLog, "The stored activity can't be shown: %s", error.what());
    }
}

QCoro::Task<void> AppModel::importInitialHistory() {
    if (services.importInitialHistory && !isEnding())
        co_await services.importInitialHistory();
}

void AppModel::stopAutomaticCaptures() {
    qCInfo(capturesLog, "Stopping observation service");
    modelState.isEnding = true;
    scheduler.stop();
    flow.abandonCapture();
    folders.stopWaiting();
    if (services.live)
        services.live->stop();
}

bool AppModel::setCaptureSchedule(CaptureSchedule schedule) {
    return services.preferences.set(preference::captureSchedule.name,
                                    std::string(rawValue(schedule)));
}

std::optional<Date> AppModel::nextAutomaticCapture() const {
    return nextCapture(modelState.captureSchedule(), modelState.lastCapture());
}

} // namespace tidemark
