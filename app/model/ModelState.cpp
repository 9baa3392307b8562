#include "app/model/ModelState.h"

#include "app/base/Background.h"
#include "app/model/Log.h"
#include "app/preferences/FollowSettings.h"

#include <utility>

namespace tidemark {

Q_LOGGING_CATEGORY(capturesLog, "app.tidemark.captures")

namespace {

OptionalShared<Snapshot> newest(const Journal& journal) {
    return journal.snapshots.empty() ? OptionalShared<Snapshot>() : journal.snapshots.back();
}

bool storedStorageSwitch(Preferences& preferences, bool sandboxed, std::optional<bool> legacy) {
    const auto& key = preference::storageEnabled;
    if (!sandboxed && legacy && !preferences.boolean(key.name))
        preferences.note(key.name, *legacy);
    return read(preferences, key);
}

} // namespace

ModelState::ModelState(Preferences& stored, bool sandboxed,
                       std::optional<bool> legacyStorageEnabled, Date now)
    : observationNow(this, now),
      storageEnabled(this, storedStorageSwitch(stored, sandboxed, legacyStorageEnabled)),
      preferences(stored) {
    followSettings(preferences, this, [this] { noteChange(); }, preference::captureSchedule);
}

CaptureSchedule ModelState::captureSchedule() const {
    return tidemark::captureSchedule(preferences);
}

void ModelState::setJournal(Journal journal) {
    auto last = std::exchange(currentJournal, Shared(std::move(journal)));
    ++journals;
    if (loaded() && newest(*currentJournal).object() != newest(*last).object())
        ++captures;
    // One that shares nothing with its successor takes long to take apart.
    releaseInBackground(std::move(last));
    noteChange();
}

void ModelState::setSystemActivity(std::vector<SystemActivity> records) {
    activity = std::move(records);
    ++activities;
    noteChange();
}

OptionalShared<Snapshot> ModelState::latest() const {
    return newest(*currentJournal);
}

std::optional<Date> ModelState::lastCapture() const {
    const auto snapshot = latest();
    return snapshot ? std::optional(snapshot->timestamp) : std::nullopt;
}

} // namespace tidemark
