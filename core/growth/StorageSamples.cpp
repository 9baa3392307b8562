#include "core/growth/StorageSamples.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tidemark {

namespace {

using Samples = std::vector<StorageSample>;

std::vector<const Snapshot*> byTime(const Journal& journal) {
    std::vector<const Snapshot*> snapshots;
    for (const auto& snapshot : journal.snapshots)
        snapshots.push_back(&*snapshot);
    std::ranges::stable_sort(snapshots, {}, &Snapshot::timestamp);
    return snapshots;
}

StorageSample sampleOf(const Snapshot& snapshot, std::size_t order) {
    StorageSample sample;
    sample.at = snapshot.timestamp;
    if (snapshot.volumeID)
        sample.volumeID = *snapshot.volumeID;
    if (snapshot.volumeContext)
        sample.volumeName = snapshot.volumeContext->name;
    sample.snapshot = &snapshot;
    sample.order = order;
    return sample;
}

StorageSample sampleOf(const FolderSize& folder, const Snapshot& snapshot, std::size_t order) {
    StorageSample sample = sampleOf(snapshot, order);
    sample.at = folder.measuredAt.value_or(snapshot.timestamp);
    sample.bytes = folder.bytes;
    sample.isRolling = folder.rollingMeasurement.value_or(false);
    sample.folder = &folder;
    return sample;
}

/// Adds a sample; it replaces the last one if that is of the same measurement.
void add(StorageSample sample, Samples& samples) {
    if (!samples.empty() && samples.back().at == sample.at && samples.back().bytes == sample.bytes)
        samples.back() = sample;
    else
        samples.push_back(sample);
}

/// The time of the kept snapshots, in which the sizes of days are not needed.
struct KeptPeriod {
    Date first = Date::distantFuture();
    Date last = Date::distantPast();

    void include(Date at) {
        first = std::min(first, Date{std::floor(at.secondsSince2001)});
        last = std::max(last, at);
    }
    bool contains(Date at) const { return first <= at && at <= last; }
};

KeptPeriod keptPeriod(const std::vector<const Snapshot*>& snapshots) {
    KeptPeriod period;
    for (const auto* snapshot : snapshots)
        period.include(snapshot->timestamp);
    return period;
}

void addDays(const StorageSeries& series, KeptPeriod kept, Samples& samples) {
    // Extends the period, because a size is a little older than the snapshot that has it.
    for (const auto& sample : samples)
        if (sample.snapshot)
            kept.include(sample.at);
    for (std::size_t i = 0; i < series.measuredAt.size(); ++i) {
        if (kept.contains(series.measuredAt[i]))
            continue;
        StorageSample sample;
        sample.at = series.measuredAt[i];
        sample.bytes = series.bytes[i];
        if (series.volumeID)
            sample.volumeID = *series.volumeID;
        if (series.volumeName)
            sample.volumeName = *series.volumeName;
        sample.isRolling = series.rollingMeasurement.value_or(false);
        samples.push_back(sample);
    }
}

void sort(Samples& samples) {
    std::ranges::stable_sort(samples, {}, &StorageSample::at);
}

Samples keptSizes(const std::vector<const Snapshot*>& snapshots, const StorageSubject& subject) {
    Samples samples;
    for (std::size_t i = 0; i < snapshots.size(); ++i) {
        const Snapshot& snapshot = *snapshots[i];
        if (subject.kind == StorageSubjectKind::freeSpace) {
            if (!snapshot.freeBytes)
                continue;
            StorageSample sample = sampleOf(snapshot, i);
            sample.bytes = *snapshot.freeBytes;
            samples.push_back(sample);
        } else if (subject.kind == StorageSubjectKind::folder) {
            for (const auto& folder : snapshot.folders)
                if (folder->path == subject.path)
                    add(sampleOf(*folder, snapshot, i), samples);
        }
    }
    return samples;
}

} // namespace

bool StorageSample::isComparable(const StorageSample& other, StorageSubjectKind kind) const {
    if (isRolling != other.isRolling)
        return false;
    if (kind == StorageSubjectKind::freeSpace)
        return !volumeID.empty() && volumeID == other.volumeID;
    return volumeID.empty() || other.volumeID.empty() || volumeID == other.volumeID;
}

std::vector<StorageSample> storageSamples(const GrowthSource& source,
                                          const StorageSubject& subject) {
    const auto snapshots = byTime(*source.journal);
    Samples samples = keptSizes(snapshots, subject);
    // The snapshots have the sizes of children, but only those of days are comparable: a child is
    // not measured at each capture.
    const KeptPeriod kept =
        subject.kind == StorageSubjectKind::childFolder ? KeptPeriod() : keptPeriod(snapshots);
    for (const auto& series : source.history->series)
        if (series->kind == subject.kind && series->path == subject.path)
            addDays(*series, kept, samples);
    sort(samples);
    return samples;
}

std::map<std::string, std::vector<StorageSample>, std::less<>>
folderSamples(const GrowthSource& source) {
    const auto snapshots = byTime(*source.journal);
    std::map<std::string, Samples, std::less<>> all;
    for (std::size_t i = 0; i < snapshots.size(); ++i)
        for (const auto& folder : snapshots[i]->folders)
            add(sampleOf(*folder, *snapshots[i], i), all[folder->path]);
    const KeptPeriod kept = keptPeriod(snapshots);
    for (const auto& series : source.history->series)
        if (series->kind == StorageSubjectKind::folder)
            addDays(*series, kept, all[series->path]);
    for (auto& [path, samples] : all)
        sort(samples);
    return all;
}

} // namespace tidemark
