#include "app/model/ObservationFlow.h"

#include "app/base/Background.h"
#include "app/model/AdditionalHistoryOptions.h"
#include "core/base/Clock.h"
#include "core/capture/AdditionalObservations.h"
#include "core/system/SystemFacts.h"

#include <QScopeGuard>

namespace tidemark {

QCoro::Task<Snapshot> ObservationFlow::take() {
    const auto hold = used.tasks.hold();
    running = std::stop_source();
    // Stops the capture when the tasks are stopped, as when the controller is destroyed.
    const auto source = running;
    std::stop_callback ending(used.tasks.token(), [source]() mutable { source.request_stop(); });
    Snapshot snapshot = co_await observed(source);
    co_return snapshot;
}

QCoro::Task<Snapshot> ObservationFlow::observed(std::stop_source source) {
    FolderCaptureAccess access = co_await used.folders.beginCapture(true);
    const auto end = qScopeGuard([&] {
        access.finish();
        used.progress.stage = std::nullopt;
    });

    Snapshot snapshot = co_await used.observe(access.options, source.get_token());
    co_await addAdditionalReports(&snapshot, source.get_token());
    snapshot.operatingSystem = SystemFacts::collectOperatingSystem();
    snapshot.expectedCaptureInterval = seconds(captureSchedule(used.preferences));
    for (const auto& issue : access.issues)
        snapshot.coverage.issues.push_back(issue);
    co_return snapshot;
}

QCoro::Task<void> ObservationFlow::addAdditionalReports(Snapshot* snapshot, std::stop_token stop) {
    auto& reports = snapshot->additionalReports.emplace();
    const auto wanted = AdditionalHistoryOptions::stored(used.preferences);
    if (wanted.isEmpty())
        co_return;
    used.progress.stage = "Scanning Additional History";
    const double start = used.clock.monotonicSeconds();
    const auto collect =
        [wanted, places = AdditionalPlaces::standard(used.home)](const std::stop_token& stopped) {
            return AdditionalObservations::collect(wanted.homebrew, wanted.diagnostics,
                                                   wanted.files, places, Clock::system(), stopped);
        };
    reports = co_await runInBackground(collect, stop);
    snapshot->captureDuration =
        snapshot->captureDuration.value_or(0) + (used.clock.monotonicSeconds() - start);
    for (const auto& report : reports)
        if (report.issue)
            snapshot->coverage.issues.push_back(*report.issue);
}

} // namespace tidemark
