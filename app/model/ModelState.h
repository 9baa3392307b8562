#pragma once

#include "app/base/Published.h"
#include "app/model/Operations.h"
#include "app/preferences/Preferences.h"
#include "core/capture/CaptureSchedule.h"
#include "core/capture/RecordingMode.h"
#include "core/journal/Journal.h"
#include "core/records/SystemActivity.h"

#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// The state that the parts of the controller share and views show. The journal in it is immutable
/// and replaced as a whole, so that a view or a background task that holds one is not affected by
/// the next capture. Main thread only.
class ModelState : public Observable {
    Q_OBJECT

public:
    /// `stored` must outlive this object.
    ModelState(const Preferences& stored, Date now);

    /// The journal as last loaded or saved. A copy keeps that journal, also after the state has the
    /// next one.
    const Shared<Journal>& journal() const { return currentJournal; }
    void setJournal(Journal journal);
    /// Incremented by every `setJournal`.
    std::uint64_t journalRevision() const { return journals; }
    /// Number of captures that were kept since the history was read.
    std::uint64_t keptCaptures() const { return captures; }
    /// The live activity records.
    const std::vector<Shared<SystemActivity>>& systemActivity() const { return activity; }
    void setSystemActivity(std::vector<Shared<SystemActivity>> records);
    /// Incremented by every `setSystemActivity`.
    std::uint64_t activityRevision() const { return activities; }

    /// The newest snapshot, if there is one.
    OptionalShared<Snapshot> latest() const;
    std::optional<Date> lastCapture() const;
    bool canRecord() const { return *recordingMode == RecordingMode::recording; }
    /// The running operations.
    Operations& operations() { return running; }
    bool isRunning(Operation operation) const { return running.isRunning(operation); }
    bool isAnyRunning(OperationSet any) const { return running.isAnyRunning(any); }
    bool mayBegin(Operation operation) const { return running.mayBegin(operation); }
    bool busy() const { return !running.isIdle(); }
    /// True when the journal and the memory history have been read.
    bool loaded() const { return !opening; }
    void setLoaded() { opening.reset(); }
    /// The schedule in the settings.
    CaptureSchedule captureSchedule() const;

    /// The error of the last load, capture or save, if it failed.
    Published<std::optional<std::string>> error{this};
    /// The error of the activity file; absent again once it can be read and written.
    Published<std::optional<std::string>> activityError{this};

    /// The moment at which the time windows end.
    Published<Date> observationNow;
    Published<RecordingMode> recordingMode{this};
    /// Incremented with every change of the recording mode: work that began under another number is
    /// stale.
    std::uint64_t recordingGeneration = 0;
    /// True when the program is ending: no capture begins, and a running one is not kept.
    bool isEnding = false;

private:
    const Preferences& preferences;
    Operations running{*this};
    std::optional<Operations::Token> opening = running.begin(Operation::opening);
    Shared<Journal> currentJournal;
    std::uint64_t journals = 0;
    std::uint64_t captures = 0;
    std::vector<Shared<SystemActivity>> activity;
    std::uint64_t activities = 0;
};

} // namespace tidemark
