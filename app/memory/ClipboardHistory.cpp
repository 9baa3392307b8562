#include "app/memory/ClipboardHistory.h"

#include "app/memory/MemoryHistoryService.h"
#include "app/preferences/PreferenceKeys.h"
#include "core/memory/ClipRules.h"
#include "core/memory/ClipTypes.h"

namespace tidemark {

ClipboardHistory::ClipboardHistory(Preferences& preferences, std::unique_ptr<Clipboard> clipboard,
                                   AppClock& clock)
    : preferences(preferences), clipboard(std::move(clipboard)), clock(clock) {
    ClipboardHistory::stop();
}

ClipboardHistory::~ClipboardHistory() {
    ClipboardHistory::stop();
    tasks.drain();
}

void ClipboardHistory::start(MemoryHistoryService& service) {
    if (!clipboard || !read(preferences, preferenceKeys::memoryClipboard))
        return;
    history = &service;
    watching = std::stop_source();
    statusText = "Connecting to the clipboard…";
    clipboard->watch(
        read(preferences, preferenceKeys::memoryExcludedApps),
        [this](const CopiedItem& item) { record(item); },
        [this](const ClipboardAccess& access) { showAccess(access); });
    tasks.start(removeOldClips(watching.get_token()));
}

void ClipboardHistory::stop() {
    const bool isOn = read(preferences, preferenceKeys::memoryClipboard);
    statusText = isOn ? "Observation paused" : "Clipboard history off";
    if (!std::exchange(history, nullptr))
        return;
    watching.request_stop();
    clipboard->unwatch();
}

void ClipboardHistory::record(const CopiedItem& item) {
    if (history == nullptr || !history->active())
        return;
    auto clip = clipRules::record(item, clock.now());
    if (!clip)
        return;
    if (const auto newest = history->newestClip(); newest && clipRules::repeats(*clip, **newest))
        return;
    history->update({*std::move(clip)});
}

void ClipboardHistory::showAccess(const ClipboardAccess& access) {
    absenceText = access.absence;
    if (!access.absence.empty())
        statusText = access.absence;
    else if (access.hasWriter)
        statusText = "Recording copied items";
    else if (access.hasFrontmost)
        statusText = "Recording copied items. The application in front is taken for the one that "
                     "copied, since this desktop does not report which one did.";
    else
        statusText = "Recording copied items. This desktop does not report which application "
                     "copied, so the list of excluded applications has no effect.";
}

QCoro::Task<void> ClipboardHistory::removeOldClips(std::stop_token stop) {
    const auto hold = tasks.hold();
    while (true) {
        const bool isDue = co_await clock.sleep(agePeriod, stop, AppClock::Slack::allowed);
        if (!isDue || history == nullptr)
            co_return;
        // Every update removes the clips that are too old, also an update without a new record.
        history->update({});
    }
}

bool ClipboardHistory::copyAgain(const MemoryRecord& clip) {
    return clipboard && clipboard->put(clipTypes::offered(clip));
}

} // namespace tidemark
