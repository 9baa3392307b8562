#include "core/growth/StorageChart.h"

#include "core/base/Text.h"
#include "core/growth/StorageChartText.h"
#include "core/growth/StorageSamples.h"
#include "core/presentation/EventRow.h"
#include "core/timeline/ObservationCoverage.h"

#include <algorithm>
#include <cmath>
#include <variant>

namespace tidemark {

namespace {

using Samples = std::vector<StorageSample>;

/// Decides which sizes are joined.
class Joining {
public:
    Joining(StorageSubjectKind kind, const Calendar& calendar) : kind(kind), calendar(calendar) {}

    bool isComparable(const StorageSample& a, const StorageSample& b) const {
        return a.isComparable(b, kind);
    }

    /// True when `b` follows `a` as soon as was expected, so that no size between them is missing.
    bool isWithinInterval(const StorageSample& a, const StorageSample& b) const {
        if (!a.snapshot || !b.snapshot)
            return calendar.startOfDay(b.at) <= calendar.startOfNextDay(a.at);
        return a.order + 1 == b.order
               && b.snapshot->timestamp - a.snapshot->timestamp
                      <= ObservationCoverage::allowance(*a.snapshot);
    }

    /// Whether the next size is overdue at `now`.
    bool isOverdue(const StorageSample& last, Date now) const {
        if (last.snapshot)
            return now - last.snapshot->timestamp > ObservationCoverage::allowance(*last.snapshot);
        return calendar.startOfNextDay(calendar.startOfNextDay(last.at)) < now;
    }

private:
    StorageSubjectKind kind;
    const Calendar& calendar;
};

std::string breakText(const StorageSample& before, const StorageSample& after) {
    if (before.volumeID == after.volumeID)
        return "Measured in another way";
    if (after.volumeID.empty())
        return "Volume not known";
    if (after.volumeName.empty())
        return "New volume";
    return "New volume: " + oneLine(after.volumeName);
}

/// Whether another volume or another way of measuring was seen. Two sizes without a known volume
/// count as unchanged.
bool isChanged(const StorageSample& before, const StorageSample& after) {
    return before.volumeID != after.volumeID || before.isRolling != after.isRolling;
}

std::string gapText(Date start, Date end) {
    return storageChartText::lengthInWords(end - start) + " without a size";
}

void begin(StorageChart& chart, const StorageSample& sample, bool isNewLine) {
    if (isNewLine)
        chart.lines.push_back({chart.points.size(), 0});
    ++chart.lines.back().count;
    StorageChart::Point point{sample.at, sample.bytes, {}, chart.lines.size() - 1};
    if (sample.snapshot)
        point.snapshot = sample.snapshot->id;
    chart.points.push_back(point);
}

void addPoints(StorageChart& chart, const Samples& samples, const Joining& joining) {
    const StorageSample* previous = nullptr;
    for (const auto& sample : samples) {
        if (sample.at > chart.through)
            break;
        const bool isComparable = previous && joining.isComparable(*previous, sample);
        const bool isWithin = previous && joining.isWithinInterval(*previous, sample);
        const bool isShown = sample.at > chart.since;
        if (isShown && previous && !isWithin)
            chart.gaps.push_back({previous->at, sample.at, gapText(previous->at, sample.at)});
        if (isShown && previous && !isComparable && isChanged(*previous, sample))
            chart.breaks.push_back({sample.at, breakText(*previous, sample)});
        if (isShown)
            begin(chart, sample, chart.points.empty() || !isComparable || !isWithin);
        previous = &sample;
    }
    if (previous && joining.isOverdue(*previous, chart.through))
        chart.gaps.push_back({previous->at, chart.through, gapText(previous->at, chart.through)});
}

void measure(StorageChart& chart) {
    if (chart.points.empty())
        return;
    const auto [least, most] =
        std::ranges::minmax_element(chart.points, {}, &StorageChart::Point::bytes);
    chart.least = least->bytes;
    chart.most = most->bytes;
}

void addFlags(StorageChart& chart, const Journal& journal) {
    for (const auto& baseline : journal.baselines) {
        const Snapshot& snapshot = *baseline.snapshot;
        if (snapshot.timestamp <= chart.since || snapshot.timestamp > chart.through)
            continue;
        StorageChart::Flag flag{snapshot.timestamp, baseline.id, snapshot.id, baseline.name};
        if (chart.subject.kind == StorageSubjectKind::freeSpace)
            flag.bytes = snapshot.freeBytes;
        for (const auto& folder : snapshot.folders)
            if (folder->path == chart.subject.path)
                flag.bytes = folder->bytes;
        chart.flags.push_back(std::move(flag));
    }
    std::ranges::stable_sort(chart.flags, {}, &StorageChart::Flag::at);
}

/// Whether a change is marked in the chart of a subject. For free space: size changes of any
/// folder, an emptied trash, and changes of free space and of the operating system. For a folder:
/// size changes and an emptied trash at its path or below it.
struct Concerns {
    const StorageSubject& subject;

    bool ofPath(const std::string& path) const {
        return path == subject.path || isBelow(path, subject.path);
    }
    bool isFreeSpace() const { return subject.kind == StorageSubjectKind::freeSpace; }

    bool operator()(const change::FolderSizeChanged& changed) const {
        return isFreeSpace() || ofPath(changed.after->path);
    }
    bool operator()(const change::TrashBecameEmpty& emptied) const {
        return isFreeSpace() || ofPath(emptied.path);
    }
    bool operator()(const change::FreeDiskSpaceChanged&) const { return isFreeSpace(); }
    bool operator()(const change::OperatingSystemChanged&) const { return isFreeSpace(); }
    bool operator()(const auto&) const { return false; }
};

void addMarks(StorageChart& chart, const Journal& journal) {
    for (const auto& event : journal.events) {
        if (event->timestamp <= chart.since || event->timestamp > chart.through)
            continue;
        const auto concerns = [&](const Change& change) {
            return std::visit(Concerns{chart.subject}, change);
        };
        if (std::ranges::any_of(event->changes, concerns))
            chart.marks.push_back({event, shownTitle(*event)});
    }
    std::ranges::stable_sort(chart.marks, {},
                             [](const auto& mark) { return mark.event->timestamp; });
}

void addCapacity(StorageChart& chart, const Journal& journal) {
    if (chart.subject.kind != StorageSubjectKind::freeSpace)
        return;
    for (const auto& snapshot : journal.snapshots)
        if (snapshot->timestamp <= chart.through && snapshot->volumeContext)
            chart.capacity = snapshot->volumeContext->capacity;
}

/// Index of the element whose time is nearest; absent without elements.
template <class Elements, class TimeOf>
std::optional<std::size_t> nearest(const Elements& elements, Date at, TimeOf timeOf) {
    if (elements.empty())
        return std::nullopt;
    const auto after = std::ranges::lower_bound(elements, at, {}, timeOf);
    if (after == elements.begin())
        return 0;
    const auto before = std::prev(after);
    const bool isBefore = after == elements.end() || at - timeOf(*before) <= timeOf(*after) - at;
    return static_cast<std::size_t>((isBefore ? before : after) - elements.begin());
}

} // namespace

StorageChart StorageChart::of(const GrowthSource& source, const StorageSubject& subject,
                              std::optional<Date> since, Date through, const Calendar& calendar) {
    StorageChart chart;
    chart.subject = subject;
    chart.since = since.value_or(Date::distantPast());
    chart.through = through;
    addPoints(chart, storageSamples(source, subject), Joining(subject.kind, calendar));
    measure(chart);
    addFlags(chart, *source.journal);
    addMarks(chart, *source.journal);
    addCapacity(chart, *source.journal);
    if (!since)
        chart.since = chart.points.empty() ? through : chart.points.front().at;
    return chart;
}

std::optional<std::size_t> StorageChart::nearestPoint(Date at) const {
    return nearest(points, at, [](const Point& point) { return point.at; });
}

std::optional<std::size_t> StorageChart::nearestMark(Date at, double tolerance) const {
    const auto found = nearest(marks, at, [](const Mark& mark) { return mark.event->timestamp; });
    if (!found || std::abs(marks[*found].event->timestamp - at) > tolerance)
        return std::nullopt;
    return found;
}

std::optional<std::size_t> StorageChart::gapAt(Date at) const {
    const auto found =
        std::ranges::find_if(gaps, [&](const Gap& gap) { return gap.start < at && at < gap.end; });
    if (found == gaps.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - gaps.begin());
}

std::optional<std::size_t> StorageChart::moved(std::optional<std::size_t> from,
                                               std::ptrdiff_t steps) const {
    if (points.empty())
        return std::nullopt;
    const std::size_t last = points.size() - 1;
    if (!from)
        return steps > 0 ? 0 : last;
    const auto there = static_cast<std::ptrdiff_t>(std::min(*from, last)) + steps;
    return static_cast<std::size_t>(
        std::clamp(there, std::ptrdiff_t(0), static_cast<std::ptrdiff_t>(last)));
}

} // namespace tidemark
