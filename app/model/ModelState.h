#pragma once

#include "app/base/Published.h"
#include "app/preferences/Preferences.h"
#include "core/capture/CaptureSchedule.h"
#include "core/capture/RecordingMode.h"
#include "core/journal/Journal.h"
#include "core/records/SystemActivity.h"

#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// What the parts of the controller know together and screens show. The flags carry its state:
/// whoever begins an operation asks `busy`, or the single flags, first. Main thread only.
class ModelState : public Observable {
    Q_OBJECT

public:
    /// Reads what the preferences say. `legacyStorageEnabled` is what an earlier edition of the
    /// program kept; it is taken over unless `sandboxed`.
    ModelState(Preferences& preferences, bool sandboxed, std::optional<bool> legacyStorageEnabled,
               Date now);

    /// As last loaded or saved.
    const Journal& journal() const { return currentJournal; }
    void setJournal(Journal journal);
    /// The live activity records.
    const std::vector<SystemActivity>& systemActivity() const { return activity; }
    void setSystemActivity(std::vector<SystemActivity> records);

    /// The newest snapshot; null when there is none.
    const Snapshot* latest() const;
    std::optional<Date> lastCapture() const;
    bool canRecord() const { return *recordingMode == RecordingMode::recording; }
    bool busy() const;

    /// The journal and the memory history have been read.
    Published<bool> loaded{this};
    /// The last load, capture or save that failed.
    Published<std::optional<std::string>> error{this};
    /// The activity file could not be opened or written; absent again once that works.
    Published<std::optional<std::string>> activityError{this};

    /// A capture runs.
    Published<bool> isScanning{this};
    /// The journal is being saved apart from a capture.
    Published<bool> isSaving{this};
    Published<bool> isReadingImport{this};
    Published<bool> isPreparingSnapshot{this};
    Published<bool> saveSnapshotPresented{this};
    Published<bool> folderManagerPresented{this};
    Published<bool> isManagingFolders{this};
    Published<bool> isCheckingRecommendedAccess{this};

    /// The moment that time windows are cut against.
    Published<Date> observationNow;
    Published<RecordingMode> recordingMode{this};
    /// Grows with every change of `recordingMode`: what began under another number is stale.
    std::uint64_t recordingGeneration = 0;
    /// The program ends: no capture begins, and none that runs is kept.
    bool isEnding = false;
    Published<CaptureSchedule> captureSchedule;
    Published<bool> storageEnabled;

Q_SIGNALS:
    void journalChanged();
    void systemActivityChanged();

private:
    Journal currentJournal;
    std::vector<SystemActivity> activity;
};

} // namespace tidemark
