#include "app/model/CaptureFlow.h"

#include "app/base/Background.h"
#include "app/model/AdditionalHistoryOptions.h"
#include "app/model/Log.h"
#include "core/base/Clock.h"
#include "core/base/Error.h"
#include "core/capture/AdditionalObservations.h"
#include "core/system/SystemFacts.h"

#include <QScopeGuard>

namespace tidemark {

bool CaptureFlow::isWanted(std::uint64_t generation) const {
    return state.canRecord() && state.recordingGeneration == generation && !state.isEnding;
}

QCoro::Task<void> CaptureFlow::scan(bool allowDuringFolderSetup) {
    const auto hold = services.tasks.hold();
    if (state.isEnding || !state.canRecord())
        co_return;
    auto capturing = state.operations().begin(allowDuringFolderSetup ? Operation::capturingInSetup
                                                                     : Operation::capturing);
    if (!capturing)
        co_return;
    state.observationNow = services.clock.now();
    const auto generation = state.recordingGeneration;
    qCInfo(capturesLog, "Capture started");
    co_await captureAndSave(generation);
    capturing.reset();
    if (state.canRecord() && state.recordingGeneration != generation && !state.isEnding)
        services.tasks.start(scan(false));
}

QCoro::Task<void> CaptureFlow::captureAndSave(std::uint64_t generation) {
    std::string failure;
    try {
        Snapshot snapshot = co_await captureObservation();
        if (!isWanted(generation))
            co_return;
        Journal next = *state.journal();
        next.append(Shared(std::move(snapshot)),
                    !read(services.preferences, preference::needsRecordingBaseline));
        co_await save(&next);
        state.setJournal(std::move(next));
        state.error = std::nullopt;
        if (state.recordingGeneration == generation)
            services.preferences.note(preference::needsRecordingBaseline.name, false);
        qCInfo(capturesLog, "Capture saved");
        co_return;
    } catch (const std::exception& error) {
        failure = error.what();
    }
    if (!isWanted(generation))
        co_return;
    qCCritical(capturesLog, "Capture failed: %s", failure.c_str());
    state.error = "The observation couldn’t be saved. " + failure;
}

QCoro::Task<void> CaptureFlow::save(const Journal* journal) {
    const auto write = [this, journal](const std::stop_token&) { services.store.save(*journal); };
    co_await runInBackground(write, {}, WorkPriority::userInitiated, &services.journalThread);
}

QCoro::Task<Snapshot> CaptureFlow::captureObservation() {
    const auto hold = services.tasks.hold();
    running = std::stop_source();
    // The end of the controller ends the capture.
    const auto source = running;
    std::stop_callback ending(services.tasks.token(),
                              [source]() mutable { source.request_stop(); });
    Snapshot snapshot = co_await observed(source);
    co_return snapshot;
}

QCoro::Task<Snapshot> CaptureFlow::observed(std::stop_source source) {
    std::shared_ptr<void> activity;
    if (services.beginActivity)
        activity = services.beginActivity("Saving a Tidemark observation");
    FolderCaptureAccess access = co_await services.folderAccess.beginCapture(true);
    const auto end = qScopeGuard([&] {
        access.finish();
        scanProgress.stage = std::nullopt;
    });

    Snapshot snapshot = co_await services.observe(access.options, source.get_token());
    co_await addAdditionalReports(&snapshot, source.get_token());
    snapshot.operatingSystem = SystemFacts::collectOperatingSystem();
    snapshot.expectedCaptureInterval = seconds(state.captureSchedule());
    for (const auto& issue : access.issues)
        snapshot.coverage.issues.push_back(issue);
    co_return snapshot;
}

QCoro::Task<void> CaptureFlow::addAdditionalReports(Snapshot* snapshot, std::stop_token stop) {
    auto& reports = snapshot->additionalReports.emplace();
    const auto wanted = AdditionalHistoryOptions::stored(services.preferences);
    if (wanted.isEmpty())
        co_return;
    scanProgress.stage = "Scanning Additional History";
    const double start = services.clock.monotonicSeconds();
    const auto collect = [wanted, home = services.home](const std::stop_token& stopped) {
        return AdditionalObservations::collect(wanted.homebrew, wanted.diagnostics, wanted.files,
                                               home, Clock::system(), stopped);
    };
    reports = co_await runInBackground(collect, stop);
    snapshot->captureDuration =
        snapshot->captureDuration.value_or(0) + (services.clock.monotonicSeconds() - start);
    for (const auto& report : reports)
        if (report.issue)
            snapshot->coverage.issues.push_back(*report.issue);
}

QCoro::Task<bool> CaptureFlow::commit(Journal journal) {
    const auto hold = services.tasks.hold();
    const auto saving = state.operations().begin(Operation::saving);
    if (!saving)
        co_return false;
    std::string failure;
    bool saved = false;
    try {
        co_await save(&journal);
        saved = true;
    } catch (const std::exception& error) {
        failure = error.what();
    }
    if (saved)
        state.setJournal(std::move(journal));
    else
        state.error = "History couldn’t be saved. " + failure;
    co_return saved;
}

QCoro::Task<void> CaptureFlow::refreshIfNeeded(Date now) {
    const auto hold = services.tasks.hold();
    state.observationNow = now;
    const auto last = state.lastCapture();
    const auto period = seconds(state.captureSchedule());
    // Taken under a clock that was ahead, as nothing else is from so far in the future. Waiting
    // until its time has come could take years.
    const bool isFromFuture = last && period && *last > now + *period;
    if (isFromFuture || isDue(state.captureSchedule(), last, now))
        co_await scan(false);
}

} // namespace tidemark
