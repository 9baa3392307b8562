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

} // namespace

ModelState::ModelState(const Preferences& stored, Date now)
    : observationNow(this, now), preferences(stored) {
    followSettings(preferences, this, [this] { noteChange(); }, preferenceKeys::captureSchedule);
}

CaptureSchedule ModelState::captureSchedule() const {
    return tidemark::captureSchedule(preferences);
}

void ModelState::setJournal(Journal journal) {
    auto last = std::exchange(currentJournal, Shared(std::move(journal)));
    ++journals;
    if (loaded() && newest(*currentJournal).object() != newest(*last).object())
        ++captures;
    // In the background, since destroying a journal that shares nothing with the new one takes
    // long.
    releaseInBackground(std::move(last));
    noteChange();
}

void ModelState::setSystemActivity(std::vector<Shared<SystemActivity>> records) {
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
