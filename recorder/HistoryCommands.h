#pragma once

#include "recorder/RecordedHistory.h"
#include "recorder/RecorderArguments.h"

#include <stop_token>
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
    /// Who asked does not wait any more.
    std::stop_token stop{};
};

using Command = std::string (*)(const Reading&);

/// What answers a command; null when it is no command of this kind. All throw `Error` for
/// arguments that do not fit.
Command find(RecorderArguments::Command command);

} // namespace tidemark::historyCommands
