#include "core/growth/GrowthReport.h"

#include "core/base/Arithmetic.h"
#include "core/base/Text.h"
#include "core/growth/StorageSamples.h"
#include "core/timeline/DiffEngine.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace tidemark {

namespace {

using Samples = std::vector<StorageSample>;

/// How far before the start of the period a size may have been measured, in seconds. Sizes of days
/// can be two days apart.
constexpr double tolerance = 2 * 86'400;

struct Window {
    Date since;
    Date through;
};

/// The sizes of a subject at the ends of a period; null where there is none.
struct Ends {
    const StorageSample* before = nullptr;
    const StorageSample* after = nullptr;

    bool areKnown(StorageSubjectKind kind) const {
        return before && after && before != after && before->isComparable(*after, kind);
    }
    std::int64_t change() const { return saturatingDifference(after->bytes, before->bytes); }
};

Ends endsOf(const Samples& samples, const Window& window) {
    Ends ends;
    for (const auto& sample : samples) {
        if (sample.at > window.through)
            break;
        const bool isAtStart = sample.at <= window.since;
        if (isAtStart ? sample.at >= window.since + -tolerance : !ends.before)
            ends.before = &sample;
        if (!isAtStart)
            ends.after = &sample;
    }
    return ends;
}

DatedSize sized(const StorageSample& sample) {
    return {sample.bytes, sample.at};
}

void addFreeSpace(GrowthReport& report, const Samples& samples, const Window& window) {
    const Ends ends = endsOf(samples, window);
    if (!ends.before || !ends.after || ends.before == ends.after)
        report.freeProblem = "Free space is not known at both ends of this period.";
    else if (ends.before->volumeID.empty() || ends.after->volumeID.empty())
        report.freeProblem = "Free space can’t be compared: it is not known of which volume it is.";
    else if (!ends.areKnown(StorageSubjectKind::freeSpace))
        report.freeProblem = "Free space can’t be compared: it is that of another volume.";
    else {
        report.freeBefore = sized(*ends.before);
        report.freeAfter = sized(*ends.after);
    }
}

/// The size in a series that was measured nearest to `at`, at most a day before or after it.
std::optional<std::int64_t> sizeNear(const StorageSeries& series, Date at) {
    const auto found = std::ranges::lower_bound(series.measuredAt, at + -86'400);
    std::optional<std::int64_t> bytes;
    double distance = 86'400;
    for (auto date = found; date != series.measuredAt.end() && *date <= at + 86'400; ++date)
        if (std::abs(*date - at) <= distance) {
            distance = std::abs(*date - at);
            bytes = series.bytes[static_cast<std::size_t>(date - series.measuredAt.begin())];
        }
    return bytes;
}

/// The children with daily sizes at both ends, the largest change first.
std::vector<StorageContribution> dailyParts(const StorageHistory& history,
                                            const std::string& folder, const Ends& ends) {
    std::vector<StorageContribution> parts;
    for (const auto& series : history.series) {
        if (series->kind != StorageSubjectKind::childFolder || parentFolder(series->path) != folder)
            continue;
        const auto before = sizeNear(*series, ends.before->at);
        const auto after = sizeNear(*series, ends.after->at);
        if (before && after && *before != *after)
            parts.push_back({series->name, *before, *after});
    }
    std::ranges::sort(parts, [](const auto& a, const auto& b) {
        const auto left = distanceBetween(a.before, a.after);
        const auto right = distanceBetween(b.before, b.after);
        return left != right ? left > right : a.name < b.name;
    });
    if (parts.size() > GrowthItem::partLimit)
        parts.resize(GrowthItem::partLimit);
    return parts;
}

std::vector<StorageContribution> partsOf(const StorageHistory& history, const std::string& folder,
                                         const Ends& ends) {
    if (ends.before->folder && ends.after->folder)
        return StorageBreakdown(*ends.before->folder, *ends.after->folder, GrowthItem::partLimit)
            .contributions;
    return dailyParts(history, folder, ends);
}

/// True when the path lies below another one of the map.
bool isInside(const std::string& path, const std::map<std::string, std::int64_t>& changes) {
    std::string folder = path;
    while (folder.size() > 1) {
        folder = parentFolder(folder);
        if (changes.contains(folder))
            return true;
    }
    return false;
}

std::int64_t outermostSum(const std::map<std::string, std::int64_t>& changes) {
    std::int64_t sum = 0;
    for (const auto& [path, change] : changes)
        if (!isInside(path, changes))
            sum = saturatingSum(sum, change);
    return sum;
}

void addFolders(GrowthReport& report, const GrowthSource& source, const Window& window) {
    const auto all = folderSamples(source);
    std::map<std::string, std::int64_t> changes;
    for (const auto& subject : storageSubjects(source)) {
        if (subject.kind != StorageSubjectKind::folder)
            continue;
        const auto samples = all.find(subject.path);
        const Ends ends = samples == all.end() ? Ends() : endsOf(samples->second, window);
        if (!ends.areKnown(StorageSubjectKind::folder)) {
            if (subject.isCurrent)
                report.unknownFolders.push_back(subject.name);
            continue;
        }
        changes.emplace(subject.path, ends.change());
        if (ends.change() == 0)
            continue;
        GrowthItem item{.path = subject.path, .name = subject.name};
        item.before = sized(*ends.before);
        item.after = sized(*ends.after);
        item.parts = partsOf(*source.history, subject.path, ends);
        report.items.push_back(std::move(item));
    }
    if (!changes.empty())
        report.monitoredChange = outermostSum(changes);
}

/// The kept snapshots at the ends of the period; null where there are not two.
struct SnapshotEnds {
    const Snapshot* before = nullptr;
    const Snapshot* after = nullptr;
};

SnapshotEnds snapshotEnds(const Journal& journal, const Window& window) {
    SnapshotEnds ends;
    for (const auto& snapshot : journal.snapshots) {
        if (snapshot->timestamp > window.through)
            break;
        const bool isAtStart = snapshot->timestamp <= window.since;
        if (isAtStart || !ends.before)
            ends.before = &*snapshot;
        if (!isAtStart)
            ends.after = &*snapshot;
    }
    if (ends.before == ends.after || !ends.after)
        return {};
    return ends;
}

/// The sizes of applications by path. A size that was measured before the application changed is
/// left out.
std::map<std::string, DatedSize> applicationSizes(const Snapshot& snapshot) {
    std::map<std::string, DatedSize> sizes;
    if (snapshot.applicationStorage)
        for (const auto& record : snapshot.applicationStorage->records)
            if (record->bytes && record->matchesObservedMetadata())
                sizes.emplace(
                    record->item->path,
                    DatedSize{*record->bytes, record->measuredAt.value_or(snapshot.timestamp)});
    return sizes;
}

/// Adds the applications that are new or gone, by the rules of comparing two snapshots.
struct AddApplications {
    std::vector<GrowthItem>& items;
    const std::map<std::string, DatedSize>& before;
    const std::map<std::string, DatedSize>& after;

    static std::optional<DatedSize> find(const std::map<std::string, DatedSize>& sizes,
                                         const std::string& path) {
        const auto found = sizes.find(path);
        return found == sizes.end() ? std::nullopt : std::optional(found->second);
    }
    GrowthItem itemOf(const Application& application, GrowthItem::State state) const {
        return {.kind = GrowthItem::Kind::application,
                .state = state,
                .path = application.path,
                .name = application.name};
    }

    void operator()(const change::ApplicationInstalled& installed) const {
        GrowthItem item = itemOf(*installed.value, GrowthItem::State::appeared);
        item.after = find(after, item.path);
        items.push_back(std::move(item));
    }
    void operator()(const change::ApplicationRemoved& removed) const {
        GrowthItem item = itemOf(*removed.value, GrowthItem::State::gone);
        item.before = find(before, item.path);
        items.push_back(std::move(item));
    }
    void operator()(const auto&) const {}
};

void addApplications(GrowthReport& report, const Journal& journal, const Window& window) {
    const auto ends = snapshotEnds(journal, window);
    if (!ends.before)
        return;
    const auto before = applicationSizes(*ends.before);
    const auto after = applicationSizes(*ends.after);
    const AddApplications add{report.items, before, after};
    for (const auto& change : DiffEngine::compare(*ends.before, *ends.after))
        std::visit(add, change);
    std::map<std::string, std::string_view> names;
    for (const auto& application : *ends.after->applications)
        names.emplace(application->path, application->name);
    for (const auto& [path, size] : after) {
        const auto earlier = AddApplications::find(before, path);
        const auto name = names.find(path);
        if (!earlier || name == names.end() || earlier->bytes == size.bytes)
            continue;
        GrowthItem item{
            .kind = GrowthItem::Kind::application, .path = path, .name = std::string(name->second)};
        item.before = *earlier;
        item.after = size;
        report.items.push_back(std::move(item));
    }
}

/// Sets the part of each item in all growth, or in all shrinkage.
void share(std::vector<GrowthItem>& items) {
    for (const bool isGrowth : {true, false}) {
        std::map<std::string, std::int64_t> changes;
        for (const auto& item : items)
            if (item.change() != 0 && (item.change() > 0) == isGrowth)
                changes.emplace(item.path, item.change());
        const auto whole = static_cast<double>(outermostSum(changes));
        for (auto& item : items)
            if (changes.contains(item.path) && (item.change() > 0) == isGrowth && whole != 0)
                item.share = std::min(1.0, static_cast<double>(item.change()) / whole);
    }
}

bool isRankedBefore(const GrowthItem& a, const GrowthItem& b) {
    const auto left = distanceBetween(a.change(), 0);
    const auto right = distanceBetween(b.change(), 0);
    return left != right ? left > right : a.path < b.path;
}

} // namespace

std::int64_t GrowthItem::change() const {
    const auto bytes = [](const std::optional<DatedSize>& size) { return size ? size->bytes : 0; };
    // Where one of both sizes is unknown, there is no change to show.
    if (state == State::changed && !(before && after))
        return 0;
    return saturatingDifference(bytes(after), bytes(before));
}

GrowthReport GrowthReport::of(const GrowthSource& source, Date since, Date through) {
    GrowthReport report;
    report.since = since;
    report.through = through;
    const Window window{since, through};
    addFreeSpace(report, storageSamples(source, StorageSubject()), window);
    addFolders(report, source, window);
    addApplications(report, *source.journal, window);
    share(report.items);
    std::ranges::sort(report.items, isRankedBefore);
    return report;
}

} // namespace tidemark
