#pragma once

#include "core/growth/GapRows.h"
#include "core/growth/GrowthSource.h"
#include "core/journal/Journal.h"
#include "core/memory/MemoryArchive.h"
#include "core/presentation/HistoryView.h"
#include "core/records/SystemActivity.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

class AppModel;
struct DataFiles;

/// Everything that was recorded, as a value that any thread may read. A copy shares the records.
struct RecordedHistory {
    Journal journal;
    std::vector<Shared<SystemActivity>> activity;
    MemoryArchive memory;
    /// One size a day, over up to ten years.
    Shared<StorageHistory> dailySizes;
    /// When recording began, paused and ended; none where that could not be read.
    std::vector<RecorderRun> runs;
    /// Why `activity`, `memory` or `dailySizes` could not be read, as a sentence.
    std::optional<std::string> activityProblem{};
    std::optional<std::string> memoryProblem{};
    std::optional<std::string> dailySizesProblem{};

    /// Reads the files, for a process that runs while no recorder does. Leaves out clips older than
    /// `clipboardDays`. Throws `Error` when the journal can't be read. Blocks.
    static RecordedHistory load(const DataFiles& files, std::int64_t clipboardDays);

    /// The problems above that occurred.
    std::vector<std::string> problems() const;
    /// The events of all sources.
    MergedHistory merged() const;
    GrowthSource growth() const;
    /// What `gapRows` needs. Refers to this object, which must outlive the result.
    GapSource gaps() const;
};

} // namespace tidemark
