#pragma once

#include "core/base/Error.h"
#include "recorder/Recorder.h"
#include "recorder/RecorderArguments.h"

#include <filesystem>
#include <stop_token>

namespace tidemark {

/// What a command says that finds the recorder at work.
inline constexpr const char* anotherOperation =
    "Another operation is running; try again in a moment.";

/// What a command is carried out with, in the process that has the data folder.
struct CommandContext {
    Recorder& recorder;
    const RecorderArguments arguments;
    /// What relative paths are relative to.
    const std::filesystem::path directory;
    const bool colour;
    /// This is the recorder that runs, and not a process that does one command.
    const bool isRunning;
    /// Who gave the command does not wait any more.
    const std::stop_token stop{};

    AppModel& model() const { return recorder.model(); }
    ModelState& state() const { return recorder.model().state(); }
    FolderAccess& folders() const { return recorder.model().folderAccess(); }
    Preferences& preferences() const { return recorder.preferences(); }

    /// Throws `Error` unless the history has been read.
    void requireHistory() const {
        if (!*state().loaded)
            throw Error(state().error->value_or("The history has not been read yet; try again."));
    }
    /// Throws `Error` unless something may begin that changes the history.
    void requireFree() const {
        requireHistory();
        if (!state().canRecord())
            throw Error("Recording is paused; tidemark resume takes it up again.");
        if (state().folderManagerPresented)
            throw Error("The folders to monitor have not been chosen yet; tidemark folders does "
                        "that.");
        if (state().busy())
            throw Error(anotherOperation);
    }
    /// Throws `Error` when what was changed will not outlive this process.
    void requireStored() const {
        if (!preferences().isStored())
            throw Error("This holds until Tidemark ends, and no longer. "
                        + preferences().problem().value_or("The settings could not be stored."));
    }
};

} // namespace tidemark
