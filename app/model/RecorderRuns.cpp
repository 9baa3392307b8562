#include "app/model/RecorderRuns.h"

#include "app/base/Background.h"
#include "app/model/Log.h"
#include "core/base/Documents.h"

#include <utility>

namespace tidemark {

using Kind = RecorderRun::Kind;

RecorderRuns::RecorderRuns(ModelState& state, std::filesystem::path document, FolderGuard guard,
                           AppClock& clock, const TaskScope& tasks)
    : state(state), document(std::move(document)), guard(std::move(guard)), clock(clock),
      tasks(tasks) {
    connect(&state, &ModelState::changed, this, &RecorderRuns::followState);
}

std::vector<RecorderRun> RecorderRuns::read(const std::filesystem::path& document) {
    return readDocument<std::vector<RecorderRun>>(document).value_or(std::vector<RecorderRun>());
}

QCoro::Task<void> RecorderRuns::open(bool recording) {
    const auto hold = tasks.hold();
    const auto load = [file = document](const std::stop_token&) { return read(file); };
    try {
        std::vector<RecorderRun> stored =
            co_await runInBackground(load, {}, WorkPriority::utility, &thread);
        known = std::move(stored);
        noteChange();
    } catch (const std::exception& error) {
        qCWarning(capturesLog, "When the recorder ran is not known: %s", error.what());
        co_return;
    }
    // A program that ends during its start records nothing: `close` is not called any more, so the
    // end would be missing.
    if (!recording || state.isEnding)
        co_return;
    isRecording = true;
    captures = state.keptCaptures();
    add(Kind::started);
    // Recording can be paused and resumed while no recorder runs.
    followMode();
}

void RecorderRuns::close() {
    if (isRecording)
        add(Kind::stopped);
    isRecording = false;
}

void RecorderRuns::followState() {
    // See `StorageHistoryKeeper::followState`.
    if (!isRecording || state.isEnding)
        return;
    followMode();
    const auto kept = state.keptCaptures();
    if (std::exchange(captures, kept) != kept)
        add(Kind::running);
}

void RecorderRuns::followMode() {
    const bool paused = !state.canRecord();
    if (paused != isPaused(known))
        add(paused ? Kind::paused : Kind::resumed);
}

void RecorderRuns::add(Kind kind) {
    append(known, {kind, clock.now()});
    noteChange();
    tasks.start(save());
}

QCoro::Task<void> RecorderRuns::save() {
    const auto hold = tasks.hold();
    const auto write = [file = document, records = known, guard = guard](const std::stop_token&) {
        writeDocument(file, records, guard);
    };
    try {
        co_await runInBackground(write, {}, WorkPriority::utility, &thread);
    } catch (const std::exception& error) {
        // This record stays in `known` and is written again together with the next one.
        qCWarning(capturesLog, "When the recorder ran is not stored: %s", error.what());
    }
}

} // namespace tidemark
