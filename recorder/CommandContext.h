#pragma once

#include <stop_token>

namespace tidemark {

class AppModel;
class FolderAccess;
class ModelState;
class Preferences;
class Recorder;

/// The sentence for a command that finds the recorder at work.
inline constexpr const char* anotherOperation =
    "Another operation is running; try again in a moment.";

/// What a command is carried out with, in the process that has the data folder.
struct CommandContext {
    Recorder& recorder;
    /// The answer is read on a terminal that takes colours.
    const bool colour;
    /// The recorder keeps running after the command.
    const bool isRunning;
    /// Requested when nobody waits for the answer any more.
    const std::stop_token stop{};

    AppModel& model() const;
    ModelState& state() const;
    FolderAccess& folders() const;
    Preferences& preferences() const;

    /// Throws `Error` unless the history has been read.
    void requireHistory() const;
    /// Throws `Error` unless something may begin that changes the history.
    void requireFree() const;
    /// Throws `Error` when changed settings will not outlive this process.
    void requireStored() const;
};

} // namespace tidemark
