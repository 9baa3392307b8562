#pragma once

#include "core/journal/Journal.h"
#include "core/memory/MemoryArchive.h"
#include "core/presentation/HistoryView.h"
#include "core/records/SystemActivity.h"

#include <string>
#include <vector>

namespace tidemark {

class AppModel;
class DataFiles;

/// Everything that was recorded, as a value that any thread may read. Copying it copies no text of
/// the journal or the memory history.
struct RecordedHistory {
    Journal journal;
    std::vector<SystemActivity> activity;
    MemoryArchive memory;
    /// What could not be read besides, in words.
    std::vector<std::string> problems;

    /// Reads the files of a recorder that does not run. Throws `Error` when the journal can't be
    /// read. Blocks.
    static RecordedHistory load(const DataFiles& files);

    /// The events of all sources.
    MergedHistory merged() const;
};

} // namespace tidemark
