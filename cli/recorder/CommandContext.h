#pragma once

#include "cli/recorder/Recorder.h"
#include "cli/recorder/RecorderArguments.h"
#include "core/base/Error.h"

#include <filesystem>

namespace tidemark {

/// What a command is carried out with, in the process that has the data folder.
struct CommandContext {
    Recorder& recorder;
    const RecorderArguments arguments;
    /// What relative paths are relative to.
    const std::filesystem::path directory;
    const bool colour;
    /// This is the recorder that runs, and not a process that does one command.
    const bool isRunning;

    AppModel& model() const { return recorder.model(); }
    ModelState& state() const { return recorder.model().state(); }
    FolderAccess& folders() const { return recorder.model().folderAccess(); }
    Preferences& preferences() const { return recorder.preferences(); }

    /// Throws `Error` unless the history has been read.
    void requireHistory() const {
        if (!*state().loaded)
            throw Error(state().error->value_or("The history has not been read yet; try again."));
    }
    /// Stores what the recorder goes by from now on. Throws `Error` when it will have forgotten it
    /// at its next start.
    void store(std::string_view key, PreferenceValue value) const {
        if (!preferences().set(key, std::move(value)))
            throw Error("This holds only until Tidemark quits: "
                        + preferences().problem().value_or("the setting could not be stored."));
    }
};

/// What a command says that finds the recorder at work.
inline constexpr const char* anotherOperation =
    "Another operation is running; try again in a moment.";

} // namespace tidemark
