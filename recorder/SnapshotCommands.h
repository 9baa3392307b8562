#pragma once

#include "recorder/CommandContext.h"

#include <QCoroTask>
#include <string>

/// Saving and deleting named snapshots. All throw `Error`.
namespace tidemark::snapshotCommands {

QCoro::Task<std::string> save(CommandContext& context);
QCoro::Task<std::string> remove(CommandContext& context);

} // namespace tidemark::snapshotCommands
