#pragma once

#include "recorder/CommandContext.h"

#include <QCoroTask>
#include <string>

/// The monitored folders. All throw `Error`.
namespace tidemark::folderCommands {

/// The monitored folders and those worth monitoring, and why any of them can't be read. Blocks.
std::string text(const FolderAccess& folders);

QCoro::Task<std::string> list(CommandContext& context);
QCoro::Task<std::string> add(CommandContext& context);
/// `track` or `remove`.
QCoro::Task<std::string> change(CommandContext& context);
/// Monitors all recommended folders that can be read.
QCoro::Task<std::string> check(CommandContext& context);

} // namespace tidemark::folderCommands
