#pragma once

#include "recorder/CommandContext.h"

#include <QCoroTask>
#include <string>

/// Carrying out the commands that concern the recorded history.
namespace tidemark::recorderCommands {

/// True of a command that needs no data folder of its own: it reads what is stored.
bool isReading(RecorderArguments::Command command);

/// In the process that has the data folder. Throws `Error`.
QCoro::Task<std::string> carryOut(CommandContext context);

/// A command that only reads, in a process that does not have the data folder. Throws `Error`.
std::string read(const RecorderPlaces& places, const RecorderArguments& arguments, bool colour);

} // namespace tidemark::recorderCommands
