#include "app/model/ModelState.h"

#include "app/base/Background.h"
#include "app/model/Log.h"
#include "app/preferences/PreferenceKeys.h"

namespace tidemark {

Q_LOGGING_CATEGORY(capturesLog, "app.tidemark.captures")

namespace {

CaptureSchedule storedSchedule(const Preferences& preferences) {
    const auto text = read(preferences, preference::captureSchedule);
    return json::fromRawValue<CaptureSchedule>(text).value_or(CaptureSchedule::halfHourly);
}

bool storedStorageSwitch(Preferences& preferences, bool sandboxed, std::optional<bool> legacy) {
    const auto& key = preference::storageEnabled;
    if (!sandboxed && legacy && !preferences.boolean(key.name))
        preferences.note(key.name, *legacy);
    return read(preferences, key);
}

} // namespace

ModelState::ModelState(Preferences& preferences, bool sandboxed,
                       std::optional<bool> legacyStorageEnabled, Date now)
    : observationNow(this, now), captureSchedule(this, storedSchedule(preferences)),
      storageEnabled(this, storedStorageSwitch(preferences, sandboxed, legacyStorageEnabled)) {}

void ModelState::setJournal(Journal journal) {
    std::swap(currentJournal, journal);
    // One that shares nothing with its successor takes long to take apart.
    releaseInBackground(std::move(journal));
    Q_EMIT journalChanged();
    Q_EMIT changed();
}

void ModelState::setSystemActivity(std::vector<SystemActivity> records) {
    activity = std::move(records);
    Q_EMIT systemActivityChanged();
    Q_EMIT changed();
}

const Snapshot* ModelState::latest() const {
    return currentJournal.snapshots.empty() ? nullptr : &*currentJournal.snapshots.back();
}

std::optional<Date> ModelState::lastCapture() const {
    const Snapshot* snapshot = latest();
    return snapshot ? std::optional(snapshot->timestamp) : std::nullopt;
}

bool ModelState::busy() const {
    return isCheckingRecommendedAccess || isScanning || isSaving || isReadingImport
           || isPreparingSnapshot || saveSnapshotPresented || folderManagerPresented
           || isManagingFolders || !loaded;
}

} // namespace tidemark
