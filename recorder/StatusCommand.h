#pragma once

#include "recorder/CommandContext.h"

#include <string>

/// How recording stands.
namespace tidemark::statusCommand {

/// In the process that has the data folder.
std::string text(const CommandContext& context);
/// Where no recorder runs, of what is stored.
std::string text(const RecordedHistory& history, const Preferences& preferences,
                 const FolderAccess& folders, bool asJson);

} // namespace tidemark::statusCommand
