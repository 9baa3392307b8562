#include "app/memory/MemoryHistoryService.h"

#include "app/base/Background.h"
#include "app/preferences/FollowSettings.h"

#include <QCoroSignal>
#include <algorithm>
#include <cmath>

namespace tidemark {

namespace {

struct Suspension {
    std::string_view reason;
    Notification begin;
    Notification end;
};

constexpr auto suspensions = std::to_array<Suspension>({
    {"sleep", notification::willSleep, notification::didWake},
    {"screen", notification::screensDidSleep, notification::screensDidWake},
    {"session", notification::sessionDidResignActive, notification::sessionDidBecomeActive},
});

bool isClip(const Shared<MemoryRecord>& record) {
    return record->kind == MemoryRecord::Kind::clipboard;
}

/// A single record that can't be written would make every save fail.
bool isStorable(const MemoryRecord& record) {
    const auto isFinite = [](Date date) { return std::isfinite(date.secondsSince2001); };
    return isFinite(record.timestamp) && isFinite(record.observedAt)
           && isFinite(record.lastOpened.value_or(Date{}))
           && std::isfinite(record.duration.value_or(0));
}

} // namespace

MemoryHistoryService::MemoryHistoryService(Setup setup)
    : preferences(setup.preferences), workspace(setup.workspaceCenter), clock(setup.clock),
      store(std::move(setup.url), std::move(setup.guard)), collectors(std::move(setup.collectors)),
      collectionAllowed(std::move(setup.collectionAllowed)) {
    followPreferences();
}

MemoryHistoryService::~MemoryHistoryService() {
    stop();
    tasks.drain();
}

void MemoryHistoryService::followPreferences() {
    using namespace preferenceKeys;
    const auto applyAge = [this] {
        update({});
        noteChange();
    };
    followSettings(preferences, this, applyAge, memoryClipboardDays);
    followSettings(
        preferences, this, [this] { reconfigure(); }, memoryFiles, memoryApps,
        memoryAllIndexedFiles, memoryFolders, memoryClipboard, memoryExcludedApps);
}

QCoro::Task<void> MemoryHistoryService::load() {
    const auto hold = tasks.hold();
    if (loaded)
        co_return;
    const auto read = [this](const std::stop_token&) { return store.load(); };
    MemoryArchive stored = co_await runInBackground(read, {}, WorkPriority::userInitiated, &thread);
    if (loaded || tasks.isStopping())
        co_return;
    publish(std::move(stored));
    loaded = true;
    update({});
}

void MemoryHistoryService::start() {
    if (!loaded || running || failure())
        return;
    running = true;
    suspensionReasons.clear();
    for (const auto& [reason, begin, end] : suspensions) {
        observers.push_back(workspace.observe(begin, [this, why = reason] { suspend(why); }));
        observers.push_back(workspace.observe(end, [this, why = reason] { resume(why); }));
    }
    observers.push_back(
        workspace.observe(notification::sleepAbandoned, [this] { resume("sleep"); }));
    reconfigure();
}

void MemoryHistoryService::stop() {
    stopCollectors();
    running = false;
    observers.clear();
}

void MemoryHistoryService::reconfigure() {
    if (!loaded)
        return;
    stopCollectors();
    if (!active())
        return;
    for (MemoryCollector* collector : collectors)
        collector->start(*this);
}

void MemoryHistoryService::stopCollectors() {
    ++stops;
    for (MemoryCollector* collector : collectors)
        collector->stop();
}

void MemoryHistoryService::suspend(std::string_view reason) {
    stopCollectors();
    suspensionReasons.insert(reason);
}

void MemoryHistoryService::resume(std::string_view reason) {
    suspensionReasons.erase(reason);
    if (suspensionReasons.empty())
        reconfigure();
}

bool MemoryHistoryService::active() const {
    return collectionAllowed() && loaded && running && suspensionReasons.empty() && !failure();
}

void MemoryHistoryService::update(std::vector<MemoryRecord> records, bool persist) {
    if (!loaded || failure())
        return;
    if (!collectionAllowed())
        records.clear();
    std::erase_if(records, std::not_fn(isStorable));
    MemoryArchive next = current;
    next.upsert(std::move(records), clock.now(), clipboardDays());
    publish(std::move(next));
    if (persist && current != lastEnqueued)
        enqueue(current);
}

bool MemoryHistoryService::beginFileHistory() {
    if (current.fileHistoryStarted)
        return false;
    MemoryArchive next = current;
    next.fileHistoryStarted = true;
    publish(std::move(next));
    update({});
    return true;
}

void MemoryHistoryService::publish(MemoryArchive next) {
    if (next == current)
        return;
    current = std::move(next);
    noteChange();
}

void MemoryHistoryService::enqueue(const MemoryArchive& next) {
    lastEnqueued = next;
    pending = next;
    if (!writing)
        tasks.start(write());
}

QCoro::Task<void> MemoryHistoryService::write() {
    writing = true;
    while (pending) {
        const auto save = [this, archive = *std::exchange(pending, {})](const std::stop_token&) {
            store.save(archive);
        };
        bool failed = false;
        try {
            co_await runInBackground(save, {}, WorkPriority::userInitiated, &thread);
        } catch (const std::exception& error) {
            qWarning("The memory history could not be saved: %s", error.what());
            failed = true;
        }
        if (failed)
            fail();
    }
    writing = false;
    // Emitted from the event loop, so that a receiver may destroy this object.
    QMetaObject::invokeMethod(this, &MemoryHistoryService::written, Qt::QueuedConnection);
}

void MemoryHistoryService::fail() {
    failureText = std::string(saveFailure);
    stopCollectors();
    running = false;
}

QCoro::Task<void> MemoryHistoryService::writer() {
    const auto hold = tasks.hold();
    while (writing)
        co_await qCoro(this, &MemoryHistoryService::written);
}

void MemoryHistoryService::requireStorable() const {
    if (!loaded)
        throw Error("The clipboard history can’t be changed before it has been read.");
    if (failure())
        throw Error("The clipboard history can’t be changed, because the last change could not be "
                    "saved. Start Tidemark again.");
}

void MemoryHistoryService::togglePin(std::string_view id) {
    requireStorable();
    const auto found = std::ranges::find_if(
        current.records, [&](const auto& record) { return isClip(record) && record->id == id; });
    if (found == current.records.end())
        return;
    MemoryRecord flipped = **found;
    flipped.pinned = !flipped.pinned;
    MemoryArchive next = current;
    next.records[static_cast<std::size_t>(found - current.records.begin())].emplace(
        std::move(flipped));
    publish(std::move(next));
    update({});
}

void MemoryHistoryService::clearClipboard() {
    requireStorable();
    MemoryArchive next = current;
    std::erase_if(next.records, isClip);
    publish(std::move(next));
    update({});
}

std::vector<Shared<MemoryRecord>> MemoryHistoryService::clips() const {
    std::vector<Shared<MemoryRecord>> clips;
    std::ranges::copy_if(current.records, std::back_inserter(clips), isClip);
    return clips;
}

std::optional<Shared<MemoryRecord>> MemoryHistoryService::newestClip() const {
    const auto found = std::ranges::find_if(current.records, isClip);
    return found == current.records.end() ? std::nullopt : std::optional(*found);
}

void MemoryHistoryService::setClipboardDays(std::int64_t wanted) {
    preferences.set(preferenceKeys::memoryClipboardDays.name, wanted);
}

std::int64_t MemoryHistoryService::clipboardDays() const {
    return read(preferences, preferenceKeys::memoryClipboardDays);
}

} // namespace tidemark
