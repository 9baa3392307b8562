#pragma once

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
class DataFiles;

/// Everything that was recorded, as a value that any thread may read. A copy shares the records of
/// the journal and of the memory history.
struct RecordedHistory {
    Journal journal;
    std::vector<SystemActivity> activity;
    MemoryArchive memory;
    /// Why `activity` or `memory` could not be read, as a sentence.
    std::optional<std::string> activityProblem{};
    std::optional<std::string> memoryProblem{};

    /// Reads the files when no recorder is running, without clips older than `clipboardDays`.
    /// Throws `Error` when the journal can't be read. Blocks.
    static RecordedHistory load(const DataFiles& files, std::int64_t clipboardDays);

    /// The events of all sources.
    MergedHistory merged() const;
};

} // namespace tidemark
