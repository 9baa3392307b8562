#pragma once

#include "recorder/CommandContext.h"

#include <QCoroTask>
#include <string>

/// Adding the installations that the system remembers. All throw `Error`.
namespace tidemark::importCommands {

/// Tells what there is.
QCoro::Task<std::string> preview(CommandContext& context);
/// Adds what is new.
QCoro::Task<std::string> import(CommandContext& context);

} // namespace tidemark::importCommands
