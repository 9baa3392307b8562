#pragma once

#include <stop_token>

namespace tidemark {

class AppModel;
class FolderAccess;
class ModelState;
class Preferences;
class Recorder;

/// The error of a command that conflicts with a running operation.
inline constexpr const char* anotherOperation =
    "Another operation is running; try again in a moment.";

/// What a command can use in the process that has locked the data folder.
struct CommandContext {
    Recorder& recorder;
    /// True when the output goes to a terminal that supports colours.
    const bool colour;
    /// True in a running recorder; false in a process that ends after the command.
    const bool isRunning;
    /// Requested when the client has disconnected.
    const std::stop_token stop{};

    AppModel& model() const;
    ModelState& state() const;
    FolderAccess& folders() const;
    Preferences& preferences() const;

    /// Throws `Error` unless the history has been read.
    void requireHistory() const;
    /// Throws `Error` unless the history can be changed now: it has been read, recording is not
    /// paused, and no other operation is running.
    void requireFree() const;
    /// Throws `Error` when the changed settings are not stored.
    void requireStored() const;
};

} // namespace tidemark
