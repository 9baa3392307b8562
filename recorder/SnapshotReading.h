#pragma once

#include "recorder/HistoryCommands.h"

/// The commands that read named snapshots.
namespace tidemark::snapshotReading {

/// The snapshot of this name or identifier. Throws `Error` when there is none, or several.
const Baseline& named(const Journal& journal, const std::string& name);

std::string list(const historyCommands::Reading& reading);
std::string show(const historyCommands::Reading& reading);
std::string compare(const historyCommands::Reading& reading);

} // namespace tidemark::snapshotReading
