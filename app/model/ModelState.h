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

/// What the parts of the controller know together and screens show. Main thread only.
class ModelState : public Observable {
    Q_OBJECT

public:
    /// The preferences outlive this. `legacyStorageEnabled` is what an earlier edition of the
    /// program kept; it is taken over unless `sandboxed`.
    ModelState(Preferences& stored, bool sandboxed, std::optional<bool> legacyStorageEnabled,
               Date now);

    /// As last loaded or saved. Whoever keeps this keeps that journal, also when the state has the
    /// next one.
    const Shared<Journal>& journal() const { return currentJournal; }
    void setJournal(Journal journal);
    /// Grows with every `setJournal`.
    std::uint64_t journalRevision() const { return journals; }
    /// How many captures were kept since the history was read.
    std::uint64_t keptCaptures() const { return captures; }
    /// The live activity records.
    const std::vector<SystemActivity>& systemActivity() const { return activity; }
    void setSystemActivity(std::vector<SystemActivity> records);
    /// Grows with every `setSystemActivity`.
    std::uint64_t activityRevision() const { return activities; }

    /// The newest snapshot, if there is one.
    OptionalShared<Snapshot> latest() const;
    std::optional<Date> lastCapture() const;
    bool canRecord() const { return *recordingMode == RecordingMode::recording; }
    /// What is under way, and what may begin.
    Operations& operations() { return running; }
    bool isRunning(Operation operation) const { return running.isRunning(operation); }
    bool isAnyRunning(OperationSet any) const { return running.isAnyRunning(any); }
    bool mayBegin(Operation operation) const { return running.mayBegin(operation); }
    bool busy() const { return !running.isIdle(); }
    /// The journal and the memory history have been read.
    bool loaded() const { return !opening; }
    void setLoaded() { opening.reset(); }
    /// How often a capture is due, as the settings say.
    CaptureSchedule captureSchedule() const;

    /// The last load, capture or save that failed.
    Published<std::optional<std::string>> error{this};
    /// The activity file could not be opened or written; absent again once that works.
    Published<std::optional<std::string>> activityError{this};

    /// The moment that time windows are cut against.
    Published<Date> observationNow;
    Published<RecordingMode> recordingMode{this};
    /// Grows with every change of `recordingMode`: what began under another number is stale.
    std::uint64_t recordingGeneration = 0;
    /// The program ends: no capture begins, and none that runs is kept.
    bool isEnding = false;
    Published<bool> storageEnabled;

private:
    const Preferences& preferences;
    Operations running{*this};
    std::optional<Operations::Token> opening = running.begin(Operation::opening);
    Shared<Journal> currentJournal;
    std::uint64_t journals = 0;
    std::uint64_t captures = 0;
    std::vector<SystemActivity> activity;
    std::uint64_t activities = 0;
};

} // namespace tidemark
