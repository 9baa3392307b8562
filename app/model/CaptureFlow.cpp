#include "app/model/CaptureFlow.h"

#include "app/model/Log.h"
#include "app/preferences/PreferenceKeys.h"

namespace tidemark {

bool CaptureFlow::isWanted(std::uint64_t generation) const {
    return state.canRecord() && state.recordingGeneration == generation && !state.isEnding
           && !isCancelled;
}

QCoro::Task<void> CaptureFlow::scan(bool allowDuringFolderSetup) {
    const auto hold = tasks.hold();
    if (state.isEnding || !state.canRecord())
        co_return;
    auto capturing = state.operations().begin(allowDuringFolderSetup ? Operation::capturingInSetup
                                                                     : Operation::capturing);
    if (!capturing)
        co_return;
    state.observationNow = clock.now();
    isCancelled = false;
    const auto generation = state.recordingGeneration;
    qCInfo(capturesLog, "Capture started");
    co_await captureAndSave(generation);
    capturing.reset();
    if (state.canRecord() && state.recordingGeneration != generation && !state.isEnding)
        tasks.start(scan(false));
}

void CaptureFlow::cancel() {
    if (!state.isAnyRunning({Operation::capturing, Operation::capturingInSetup}))
        return;
    isCancelled = true;
    observations.abandon();
}

QCoro::Task<void> CaptureFlow::captureAndSave(std::uint64_t generation) {
    std::string failure;
    try {
        Snapshot snapshot = co_await observations.take();
        if (!isWanted(generation))
            co_return;
        Journal next = *state.journal();
        next.append(Shared(std::move(snapshot)),
                    !read(preferences, preferenceKeys::needsRecordingBaseline));
        co_await file.save(&next);
        state.setJournal(std::move(next));
        state.error = std::nullopt;
        if (state.recordingGeneration == generation)
            preferences.note(preferenceKeys::needsRecordingBaseline.name, false);
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

QCoro::Task<bool> CaptureFlow::commit(Journal journal) {
    const auto hold = tasks.hold();
    const auto saving = state.operations().begin(Operation::saving);
    if (!saving)
        co_return false;
    std::string failure;
    bool saved = false;
    try {
        co_await file.save(&journal);
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
    const auto hold = tasks.hold();
    state.observationNow = now;
    const auto last = state.lastCapture();
    const auto period = seconds(state.captureSchedule());
    // True when the last capture was taken while the clock was ahead. Counted from that time, the
    // next one might be due only in years.
    const bool isFromFuture = last && period && *last > now + *period;
    if (isFromFuture || isDue(state.captureSchedule(), last, now))
        co_await scan(false);
}

} // namespace tidemark
