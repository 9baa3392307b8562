#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tidemark {

/// A command that concerns the recorded history, as its arguments tell it. A running recorder
/// carries it out; otherwise the process that was given it does.
struct RecorderArguments {
    enum class Command {
        none,
        capture,
        timeline,
        status,
        pause,
        resume,
        schedule,
        listFolders,
        addFolder,
        trackFolder,
        removeFolder,
        checkFolders,
        listSettings,
        getSetting,
        setSetting,
        coverage,
    };

    Command command = Command::none;
    bool json = false;
    /// How far back: "7d", "12h", "3w" or a date.
    std::string since;
    std::optional<std::size_t> limit;
    /// `schedule`: the new value; empty to tell the present one.
    std::string schedule;
    std::string path;
    std::vector<std::string> purposes;
    bool on = true;
    std::string key;
    std::string value;
    /// `capture`: "recommended" or "none" when the folder set-up is to be done first.
    std::string setup;

    /// It only reads: it needs no lock when no recorder runs.
    bool isReading() const;
};

/// Adds the commands to a command line; the one that it finds ends in `into`.
void addRecorderCommands(CLI::App& app, RecorderArguments& into);

/// The arguments of a request from another process. Throws `Error` when they are wrong.
RecorderArguments parseRecorderArguments(const std::vector<std::string>& arguments);

} // namespace tidemark
