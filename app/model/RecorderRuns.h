#pragma once

#include "app/base/AppClock.h"
#include "app/base/Observable.h"
#include "app/base/TaskScope.h"
#include "app/base/WorkerPool.h"
#include "app/model/ModelState.h"
#include "core/base/FolderGuard.h"
#include "core/growth/RecorderRun.h"

#include <QCoroTask>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// Records when recording began, paused, resumed and ended, and that it ran at each capture, in the
/// document "recorder-runs.json", so that a gap between captures can be explained. A document that
/// can't be read is never written; gaps are then explained by the records of sleep alone. Main
/// thread only.
class RecorderRuns : public Observable {
    Q_OBJECT

public:
    /// The arguments must outlive this object. `guard` is the guard of the data folder.
    RecorderRuns(ModelState& state, std::filesystem::path document, FolderGuard guard,
                 AppClock& clock, const TaskScope& tasks);

    /// The records in the document; none when there is no document. Throws `FileError`.
    static std::vector<RecorderRun> read(const std::filesystem::path& document);

    /// Reads the records. With `recording`, adds that recording has begun, and follows pauses and
    /// captures from then on; without it, changes nothing on disk. Does not throw.
    QCoro::Task<void> open(bool recording);
    /// Adds that recording has ended, if `open` added that it began. Called when the program ends;
    /// the document is written in the background.
    void close();

    const std::vector<RecorderRun>& records() const { return known; }

private:
    void followState();
    void followMode();
    void add(RecorderRun::Kind kind);
    QCoro::Task<void> save();

    ModelState& state;
    const std::filesystem::path document;
    const FolderGuard guard;
    AppClock& clock;
    const TaskScope& tasks;
    WorkerPool thread{1};
    std::vector<RecorderRun> known;
    std::uint64_t captures = 0;
    bool isRecording = false;
};

} // namespace tidemark
