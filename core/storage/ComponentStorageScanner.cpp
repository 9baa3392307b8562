#include "core/storage/ComponentStorageScanner.h"

#include "core/base/CanonicalPath.h"
#include "core/base/Collation.h"
#include "core/base/Error.h"
#include "core/base/Text.h"
#include "core/storage/FolderContents.h"
#include "core/storage/StorageMeasurementError.h"
#include "core/system/TrashFolder.h"

#include <algorithm>
#include <array>

namespace tidemark {

namespace {

constexpr std::int64_t cursorEntryLimit = 5'000'000;

/// An item that took longer, in seconds, is saved at once, so that a crash does not lose that work.
constexpr double longItem = 1;

/// Length of a slice in seconds, by the number of consecutive failed attempts, so that a very large
/// item gets longer slices.
constexpr std::array sliceSeconds{15.0, 30.0, 60.0, 120.0};
constexpr std::int64_t attemptLimit = sliceSeconds.size() - 1;

double sliceFor(std::int64_t attempts) {
    return sliceSeconds[static_cast<std::size_t>(
        std::clamp<std::int64_t>(attempts, 0, attemptLimit))];
}

/// Unlocks a lock for its lifetime.
class ScopedUnlock {
public:
    explicit ScopedUnlock(std::unique_lock<std::mutex>& lock) : lock(lock) { lock.unlock(); }
    ~ScopedUnlock() { lock.lock(); }
    ScopedUnlock(const ScopedUnlock&) = delete;
    ScopedUnlock& operator=(const ScopedUnlock&) = delete;

private:
    std::unique_lock<std::mutex>& lock;
};

/// Sets a flag for its lifetime.
class ScopedFlag {
public:
    explicit ScopedFlag(bool& flag) : flag(flag) { this->flag = true; }
    ~ScopedFlag() { flag = false; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

private:
    bool& flag;
};

bool isDue(const StorageMeasurementRecord& record, Date now, double refreshInterval) {
    // With an interval of 0 everything is due, even if the clock was set back and the age is
    // negative.
    const bool fresh = refreshInterval > 0 && record.matchesObservedMetadata() && record.measuredAt
                       && now - *record.measuredAt < refreshInterval;
    return !fresh;
}

using RecordPlace = MeasurementRecords::iterator;

/// The records that are due: first those that were never attempted, then by the time of the last
/// attempt.
std::vector<RecordPlace> dueRecords(MeasurementRecords& records, Date now, double refreshInterval) {
    std::vector<RecordPlace> due;
    for (auto place = records.begin(); place != records.end(); ++place)
        if (isDue(*place->second, now, refreshInterval))
            due.push_back(place);
    std::ranges::sort(due, {}, [](RecordPlace place) {
        return std::pair(place->second->attemptedAt.value_or(Date::distantPast()),
                         std::string_view(place->first));
    });
    return due;
}

Shared<SizeByName> largestParts(const Shared<SizeByName>& parts) {
    if (parts->size() <= StorageMeasurementRecord::partLimit)
        return parts;
    std::vector<std::pair<std::string, std::int64_t>> largest(parts->begin(), parts->end());
    const auto end = largest.begin() + StorageMeasurementRecord::partLimit;
    std::ranges::partial_sort(largest, end, [](const auto& a, const auto& b) {
        return a.second != b.second ? a.second > b.second : a.first < b.first;
    });
    return Shared(SizeByName(largest.begin(), end));
}

void noteSuccess(StorageMeasurementRecord& record, const FolderSize& size,
                 const Shared<StorageMeasurementItem>& measured, Date now) {
    record.breakdown = largestParts(size.breakdown);
    record.breakdownComplete = size.breakdown->size() <= StorageMeasurementRecord::partLimit;
    record.bytes = size.bytes;
    record.allocatedBytes = size.allocatedBytes;
    record.measuredAt = now;
    record.measuredItem = measured;
    record.attempts = 0;
    record.issue.reset();
}

/// Records a failed attempt. An earlier size is kept, with its date.
void noteFailure(StorageMeasurementRecord& record, StorageMeasurementFailure failure) {
    record.issue = rawValue(failure);
    record.attempts = std::min(std::max<std::int64_t>(record.attempts, 0) + 1, attemptLimit);
}

StorageMeasurementReport reportOf(const MeasurementRecords& records, Date now) {
    StorageMeasurementReport report{.records = {}, .observedAt = now};
    report.records.reserve(records.size());
    for (const auto& [path, record] : records)
        report.records.push_back(record);
    const Collation collation;
    std::ranges::sort(report.records, [&](const auto& a, const auto& b) {
        const int order = collation.compare(a->item->name, b->item->name);
        return order != 0 ? order < 0 : a->item->path < b->item->path;
    });
    return report;
}

} // namespace

ComponentStorageScanner::ComponentStorageScanner(std::filesystem::path url,
                                                 std::int64_t entriesInSlice, Clock& clock,
                                                 FolderGuard guard)
    : entriesPerSlice(std::max<std::int64_t>(entriesInSlice, 1)), clock(clock),
      cache(std::move(url), std::move(guard)) {}

void ComponentStorageScanner::beginCapture() {
    const Lock lock(mutex);
    captureActive = true;
    captureSizes.clear();
}

void ComponentStorageScanner::endCapture() {
    const Lock lock(mutex);
    captureActive = false;
    captureSizes.clear();
}

void ComponentStorageScanner::save() {
    const Lock lock(mutex);
    cache.save();
}

void ComponentStorageScanner::retainCursors(const std::vector<std::filesystem::path>& roots) {
    std::vector<std::string> kept;
    kept.reserve(roots.size());
    for (const auto& root : roots)
        kept.push_back(textFromBytes(canonicalPath(root).native()));
    const Lock lock(mutex);
    std::erase_if(cursors, [&](const auto& cursor) {
        return std::ranges::none_of(kept, [&](const std::string& root) {
            return cursor.first == root || isBelow(cursor.first, root);
        });
    });
}

StorageMeasurementReport
ComponentStorageScanner::collect(const std::vector<StorageMeasurementItem>& items, double seconds,
                                 double refreshInterval, const Measure& measure,
                                 const std::stop_token& stop) {
    Lock lock(mutex);
    return collectLocked(lock, items, seconds, refreshInterval, measure, stop);
}

FolderStorageReport ComponentStorageScanner::collectFolder(const std::filesystem::path& url,
                                                           double seconds,
                                                           const std::stop_token& stop) {
    const auto folder = canonicalPath(url);
    Lock lock(mutex);
    const double start = clock.monotonicSeconds();
    auto listing = listContents(folder, clock, stop);
    if (!listing)
        throw StorageMeasurementError(listing.error());

    const double left = std::max(seconds - (clock.monotonicSeconds() - start), 0.0);
    FolderStorageReport report;
    report.children = collectLocked(lock, listing->subfolders, left, 0, {}, stop);
    report.path = textFromBytes(folder.native());
    report.name = TrashFolder::is(report.path) ? "Trash" : lastPathComponent(report.path);
    report.directFileBytes = listing->fileBytes;
    report.directAllocatedBytes = listing->fileAllocatedBytes;
    if (listing->fileSizes.size() <= FolderSize::directFileLimit)
        report.directFileSizes.emplace(std::move(listing->fileSizes));
    report.itemCount = listing->itemCount;
    report.sampledAt = clock.now();
    return report;
}

StorageMeasurementReport
ComponentStorageScanner::collectLocked(Lock& lock, const std::vector<StorageMeasurementItem>& items,
                                       double seconds, double refreshInterval,
                                       const Measure& measure, const std::stop_token& stop) {
    if (collecting)
        throw Error("Another storage measurement is still running.");
    const ScopedFlag busy(collecting);
    cache.load();

    const Date now = clock.now();
    auto records = merged(items);
    const Round round{clock.monotonicSeconds() + seconds, measure, stop};
    // The batch starts before the first walk: items whose size is known from another walk take time
    // as well, because their records are stored and saved.
    batch = {.start = clock.monotonicSeconds()};
    for (const RecordPlace place : dueRecords(records, now, refreshInterval)) {
        if (batch.isOver(clock.monotonicSeconds()))
            rest(lock, walkPause, stop);
        const double start = clock.monotonicSeconds();
        auto attempted = attempt(lock, *place->second, round);
        if (!attempted)
            break;
        place->second.emplace(*std::move(attempted));
        const double end = clock.monotonicSeconds();
        cache.store(place->second, end);
        if (end - start > longItem || cache.isSaveDue(end))
            cache.save();
    }
    // A capture calls this for one folder after the other, and saves at its end.
    if (!captureActive || cache.isSaveDue(clock.monotonicSeconds()))
        cache.save();
    return reportOf(records, now);
}

/// Waits with the lock released, so that other calls can run. False when stopped.
bool ComponentStorageScanner::rest(Lock& lock, double seconds, const std::stop_token& stop) {
    // Saves what was measured before a long walk without waiting for the end of that walk.
    if (cache.isSaveDue(clock.monotonicSeconds()))
        cache.save();
    const auto pause = [&] {
        const ScopedUnlock others(lock);
        return clock.pause(seconds, stop);
    };
    const bool mayContinue = pause();
    batch = {.start = clock.monotonicSeconds()};
    return mayContinue;
}

/// The known record of each item, updated with its present state.
MeasurementRecords
ComponentStorageScanner::merged(const std::vector<StorageMeasurementItem>& items) const {
    MeasurementRecords records;
    for (const StorageMeasurementItem& item : items) {
        const auto* known = cache.find(item.path);
        if (known && (*known)->item == item) {
            records.insert_or_assign(item.path, *known);
            continue;
        }
        StorageMeasurementRecord record;
        // Another identifier means that something else is at that path now.
        if (known && (*known)->item->identifier == item.identifier)
            record = **known;
        record.item.emplace(StorageMeasurementItem(item));
        records.insert_or_assign(item.path, Shared(std::move(record)));
    }
    return records;
}

/// The record after another attempt; absent when there was no time left or it was cancelled.
std::optional<StorageMeasurementRecord>
ComponentStorageScanner::attempt(Lock& lock, StorageMeasurementRecord record, const Round& round) {
    if (round.stop.stop_requested() || clock.monotonicSeconds() >= round.deadline)
        return std::nullopt;
    const Date start = clock.now();
    lastVisited = 0;
    lastMeasured = record.item;
    auto result = measureNow(lock, record, round);
    if (round.stop.stop_requested())
        return std::nullopt;

    const Date end = clock.now();
    record.attemptedAt = end;
    record.lastAttemptDuration = end - start;
    record.visitedEntries = lastVisited;
    if (!result) {
        noteFailure(record, result.error());
        return record;
    }
    noteSuccess(record, *result, lastMeasured, end);
    if (captureActive)
        captureSizes.add(record.item->path, *std::move(result));
    return record;
}

ComponentStorageScanner::Measurement
ComponentStorageScanner::measureNow(Lock& lock, const StorageMeasurementRecord& record,
                                    const Round& round) {
    if (captureActive)
        if (auto size = captureSizes.find(record.item->path))
            return *std::move(size);
    const double remaining = round.deadline - clock.monotonicSeconds();
    const double slice = std::min(remaining, sliceFor(record.attempts));
    if (!round.measure)
        return measureSlice(lock, record.item, slice, round.stop);
    const ScopedUnlock others(lock);
    return round.measure(record.item->path, slice);
}

ComponentStorageScanner::Measurement
ComponentStorageScanner::measureSlice(Lock& lock, const Shared<StorageMeasurementItem>& item,
                                      double seconds, const std::stop_token& stop) {
    const auto cursor = cursorFor(item);
    if (!cursor)
        return std::unexpected(cursor.error());
    const auto& walk = *cursor;
    lastMeasured = cursors.at(item->path).item;
    const WalkBudget budget{clock.monotonicSeconds() + seconds, entriesPerSlice};
    const std::int64_t start = walk->count();
    std::int64_t counted = start;
    const auto countSteps = [&] {
        walked += walk->count() - std::exchange(counted, walk->count());
    };
    const auto slice = [&] {
        try {
            return walkInBatches(*walk, budget, clock, stop, batch, [&](double pause) {
                countSteps();
                return rest(lock, pause, stop);
            });
        } catch (...) {
            walk->rest(stop);
            throw;
        }
    };
    auto outcome = slice();
    countSteps();
    lastVisited = walk->count() - start;
    if (!outcome) {
        // The next slice may be hours away, and a disk with an open folder can't be unmounted.
        walk->rest(stop);
        return std::unexpected(outcome.error());
    }
    if (captureActive && outcome->has_value())
        captureSizes.add(walk->takeCompletedSizes());
    cursors.erase(item->path);
    return *std::move(outcome);
}

/// Whether an unfinished walk is continued for the present state of its item. A walk that began
/// before the item changed gives a size of neither state, so it is started anew. When only the
/// modification date changes, this happens once: a folder that changes between all captures would
/// otherwise never be measured. After its second change the walk is continued, and the size counts
/// for the state in which the walk began.
bool ComponentStorageScanner::Cursor::continuesFor(const StorageMeasurementItem& now) const {
    StorageMeasurementItem unchanged = now;
    if (startedAnew)
        unchanged.modified = item->modified;
    return unchanged == *item;
}

/// The unfinished walk of an item, or a new one.
ComponentStorageScanner::SharedWalk
ComponentStorageScanner::cursorFor(const Shared<StorageMeasurementItem>& item) {
    const auto known = cursors.find(item->path);
    const bool isKnown = known != cursors.end();
    if (isKnown && known->second.continuesFor(*item))
        return known->second.walk;
    if (isKnown)
        cursors.erase(known);
    auto walk = StorageTraversal::openItem(item->path, cursorEntryLimit,
                                           StorageTraversal::RootFiles::summed);
    if (!walk)
        return std::unexpected(walk.error());
    auto shared = std::make_shared<StorageTraversal>(*std::move(walk));
    cursors.emplace(item->path, Cursor{item, shared, isKnown});
    return shared;
}

} // namespace tidemark
