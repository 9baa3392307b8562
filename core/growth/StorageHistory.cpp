#include "core/growth/StorageHistory.h"

#include "core/growth/StorageSubject.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <ranges>
#include <tuple>
#include <utility>

namespace tidemark {

namespace {

/// One size to record.
struct Measured {
    StorageSubjectKind kind{};
    std::string path;
    std::string name;
    bool isRolling = false;
    std::int64_t bytes = 0;
    Date at;
};

/// Identifies a series. A size is added to the series that has the same key.
using Key = std::tuple<std::string, StorageSubjectKind, std::optional<std::string>, bool>;

Key keyOf(const StorageSeries& series) {
    return {series.path, series.kind, series.volumeID, series.rollingMeasurement.value_or(false)};
}

Date wholeSecond(Date date) {
    return {std::floor(date.secondsSince2001)};
}

/// Adds the sizes of snapshots to the series of a history. Changed series are copied once.
class Recording {
public:
    Recording(StorageHistory& history, const Calendar& calendar)
        : history(history), calendar(calendar) {
        for (std::size_t i = 0; i < history.series.size(); ++i)
            places.emplace(keyOf(*history.series[i]), i);
    }

    void add(const Snapshot& snapshot) {
        dropAfter(snapshot.timestamp);
        addFreeSpace(snapshot);
        for (const auto& folder : snapshot.folders)
            addFolder(*folder, snapshot);
        if (snapshot.folderStorage)
            for (const auto& report : *snapshot.folderStorage)
                addChildren(report, snapshot);
    }

    /// Shares the changed series, and applies the limits.
    void finish() {
        for (auto& [place, series] : changed)
            if (history.series[place] != series)
                history.series[place].emplace(std::move(series));
        changed.clear();
        dropOld();
        dropChildren();
    }

private:
    StorageSeries& edited(std::size_t place) {
        return changed.try_emplace(place, *history.series[place]).first->second;
    }

    const StorageSeries& at(std::size_t place) const {
        const auto found = changed.find(place);
        return found == changed.end() ? *history.series[place] : found->second;
    }

    /// Drops the points dated after the capture, which were made while the clock was ahead. As long
    /// as they were kept, every size measured before their date would be ignored.
    void dropAfter(Date capture) {
        for (std::size_t i = 0; i < history.series.size(); ++i) {
            if (at(i).measuredAt.empty() || at(i).measuredAt.back() <= capture)
                continue;
            auto& series = edited(i);
            while (!series.measuredAt.empty() && series.measuredAt.back() > capture) {
                series.measuredAt.pop_back();
                series.bytes.pop_back();
            }
        }
    }

    void addFreeSpace(const Snapshot& snapshot) {
        if (!snapshot.freeBytes || !snapshot.volumeID)
            return;
        add({StorageSubjectKind::freeSpace,
             {},
             std::string(StorageSubject::freeSpaceName),
             false,
             *snapshot.freeBytes,
             snapshot.timestamp},
            snapshot);
    }

    void addFolder(const FolderSize& folder, const Snapshot& snapshot) {
        add({StorageSubjectKind::folder, folder.path, folder.name,
             folder.rollingMeasurement.value_or(false), folder.bytes,
             folder.measuredAt.value_or(snapshot.timestamp)},
            snapshot);
    }

    void addChildren(const FolderStorageReport& report, const Snapshot& snapshot) {
        std::vector<const StorageMeasurementRecord*> children;
        for (const auto& record : report.children.records)
            if (record->bytes && record->measuredAt)
                children.push_back(&*record);
        std::ranges::sort(children, [](const auto* a, const auto* b) {
            return *a->bytes != *b->bytes ? *a->bytes > *b->bytes : a->item->path < b->item->path;
        });
        if (children.size() > StorageHistory::keptChildLimit)
            children.resize(StorageHistory::keptChildLimit);
        for (std::size_t i = 0; i < children.size(); ++i) {
            const auto& child = *children[i];
            Measured size{StorageSubjectKind::childFolder,
                          child.item->path,
                          child.item->name,
                          false,
                          *child.bytes,
                          *child.measuredAt};
            if (i < StorageHistory::childLimit || places.contains(keyFor(size, snapshot)))
                add(std::move(size), snapshot);
        }
    }

    static Key keyFor(const Measured& size, const Snapshot& snapshot) {
        return {size.path, size.kind, snapshot.volumeID, size.isRolling};
    }

    void add(Measured size, const Snapshot& snapshot) {
        if (size.at > snapshot.timestamp || !std::isfinite(size.at.secondsSince2001))
            return;
        size.at = wholeSecond(size.at);
        const auto [found, isNew] =
            places.try_emplace(keyFor(size, snapshot), history.series.size());
        if (isNew)
            history.series.emplace_back(begun(size, snapshot));
        put(found->second, size, snapshot);
    }

    static StorageSeries begun(const Measured& size, const Snapshot& snapshot) {
        StorageSeries series;
        series.kind = size.kind;
        series.path = size.path;
        series.volumeID = snapshot.volumeID;
        if (size.isRolling)
            series.rollingMeasurement = true;
        return series;
    }

    void put(std::size_t place, Measured& size, const Snapshot& snapshot) {
        const auto& known = at(place);
        const bool hasPoints = !known.measuredAt.empty();
        if (hasPoints && size.at < known.measuredAt.back())
            return;
        const bool isSameDay = hasPoints && isOneDay(known.measuredAt.back(), size.at);
        auto& series = edited(place);
        series.name = std::move(size.name);
        if (snapshot.volumeContext)
            series.volumeName = snapshot.volumeContext->name;
        if (isSameDay) {
            series.measuredAt.back() = size.at;
            series.bytes.back() = size.bytes;
        } else {
            series.measuredAt.push_back(size.at);
            series.bytes.push_back(size.bytes);
        }
    }

    /// Keeps the bounds of the day that was asked about last, because the calendar is slow and most
    /// calls ask about the same day.
    bool isOneDay(Date a, Date b) {
        if (!(day.first <= b && b < day.second))
            day = {calendar.startOfDay(b), calendar.startOfNextDay(b)};
        return day.first <= a && a < day.second;
    }

    void dropOld() {
        Date newest = Date::distantPast();
        for (const auto& series : history.series)
            if (!series->measuredAt.empty())
                newest = std::max(newest, series->measuredAt.back());
        const Date oldest = newest + -StorageHistory::secondsKept;
        for (auto& series : history.series)
            if (!series->measuredAt.empty() && series->measuredAt.front() < oldest)
                series.emplace(since(oldest, *series));
        std::erase_if(history.series,
                      [](const auto& series) { return series->measuredAt.empty(); });
    }

    static StorageSeries since(Date oldest, const StorageSeries& all) {
        StorageSeries kept = all;
        const auto dropped =
            std::ranges::lower_bound(kept.measuredAt, oldest) - kept.measuredAt.begin();
        kept.measuredAt.erase(kept.measuredAt.begin(), kept.measuredAt.begin() + dropped);
        kept.bytes.erase(kept.bytes.begin(), kept.bytes.begin() + dropped);
        return kept;
    }

    void dropChildren() {
        const auto isChild = [](const Shared<StorageSeries>& series) {
            return series->kind == StorageSubjectKind::childFolder;
        };
        std::vector<Date> ends;
        for (const auto& series : history.series)
            if (isChild(series))
                ends.push_back(series->measuredAt.back());
        if (ends.size() <= StorageHistory::seriesLimit)
            return;
        auto excess = static_cast<std::ptrdiff_t>(ends.size() - StorageHistory::seriesLimit);
        std::ranges::nth_element(ends, ends.begin() + excess);
        const Date firstKept = ends[static_cast<std::size_t>(excess)];
        std::erase_if(history.series, [&](const auto& series) {
            return isChild(series) && series->measuredAt.back() < firstKept;
        });
    }

    StorageHistory& history;
    const Calendar& calendar;
    std::map<Key, std::size_t> places;
    std::map<std::size_t, StorageSeries> changed;
    std::pair<Date, Date> day{Date::distantFuture(), Date::distantPast()};
};

/// The time of the newest point that is not later than `last`.
Date newestThrough(const StorageHistory& history, Date last) {
    Date newest = Date::distantPast();
    for (const auto& series : history.series)
        for (const Date at : series->measuredAt | std::views::reverse)
            if (at <= last) {
                newest = std::max(newest, at);
                break;
            }
    return newest;
}

} // namespace

void StorageHistory::record(const Snapshot& snapshot, const Calendar& calendar) {
    Recording recording(*this, calendar);
    recording.add(snapshot);
    recording.finish();
}

bool StorageHistory::catchUp(const std::vector<Shared<Snapshot>>& snapshots,
                             const Calendar& calendar) {
    if (snapshots.empty())
        return false;
    const Date last = snapshots.back()->timestamp;
    const Date newest = newestThrough(*this, last);
    std::vector<const Snapshot*> later;
    for (const auto& snapshot : snapshots)
        // Includes snapshots of the same second, since two captures may be taken within one.
        if (wholeSecond(snapshot->timestamp) >= newest && snapshot->timestamp <= last)
            later.push_back(&*snapshot);
    std::ranges::stable_sort(later, {}, &Snapshot::timestamp);
    const auto before = series;
    Recording recording(*this, calendar);
    for (const auto* snapshot : later)
        recording.add(*snapshot);
    recording.finish();
    return series != before;
}

} // namespace tidemark
