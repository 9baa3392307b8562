#pragma once

#include "cli/recorder/RecordedHistory.h"
#include "cli/recorder/RecorderArguments.h"

#include <string>

/// What the commands tell that only read the recorded history. Pure functions but for the zone of
/// the user; any thread may call them.
namespace tidemark::historyCommands {

/// What is read, and for whom.
struct Reading {
    RecordedHistory history;
    RecorderArguments arguments;
    bool colour = false;
    Date now = Date::now();
};

using Command = std::string (*)(const Reading&);

/// What answers a command; null when it is no command of this kind. All throw `Error` for
/// arguments that do not fit.
Command find(RecorderArguments::Command command);

} // namespace tidemark::historyCommands
