#pragma once

#include "app/control/ControlProtocol.h"
#include "cli/recorder/Recorder.h"
#include "cli/recorder/RecorderArguments.h"

#include <QCoroTask>
#include <filesystem>
#include <stop_token>

/// Carrying out the commands that concern the recorded history.
namespace tidemark::recorderCommands {

/// What a command is carried out with besides the recorder.
struct Circumstances {
    bool colour = false;
    /// What relative paths are relative to.
    std::filesystem::path directory;
    /// This is the recorder that runs, and not a process that does one command.
    bool isRunning = false;
    /// Who gave the command does not wait any more.
    std::stop_token stop{};
};

/// In the process that has the data folder. Throws `Error`.
QCoro::Task<std::string> carryOut(Recorder& recorder, RecorderArguments arguments,
                                  Circumstances circumstances);

/// A command that only reads, in a process that does not have the data folder. Throws `Error`.
std::string read(const RecorderPlaces& places, const RecorderArguments& arguments, bool colour);

/// Chooses the recommended folders that can be read, or none, and counts the set-up as done.
QCoro::Task<void> setUp(Recorder& recorder, std::string choice);

} // namespace tidemark::recorderCommands
