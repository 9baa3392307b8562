#pragma once

#include "recorder/CommandContext.h"

#include <QCoroTask>
#include <string>
#include <vector>

/// Capturing, and whether and when it happens. All throw `Error`.
namespace tidemark::captureCommands {

/// Takes a capture now and tells what is new.
QCoro::Task<std::string> capture(CommandContext& context);
QCoro::Task<std::string> pause(CommandContext& context);
QCoro::Task<std::string> resume(CommandContext& context);
std::string scheduleText(CaptureSchedule schedule);
QCoro::Task<std::string> setSchedule(CommandContext& context);

/// Those of the folders that can be opened now. Blocks.
std::vector<RecommendedFolder> readable(std::vector<RecommendedFolder> folders);

/// Monitors those of `folders` that can be read, and counts the set-up as done. In a recorder that
/// runs, a capture follows.
QCoro::Task<void> setUp(Recorder& recorder, std::vector<RecommendedFolder> folders);

} // namespace tidemark::captureCommands
