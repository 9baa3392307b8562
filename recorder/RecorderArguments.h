#pragma once

#include "core/history/HistoryExport.h"
#include "core/presentation/WorkspaceDestination.h"
#include "core/records/EventCategory.h"

#include <cstddef>
#include <optional>
#include <set>
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
        search,
        status,
        pause,
        resume,
        tellSchedule,
        setSchedule,
        listFolders,
        addFolder,
        trackFolder,
        removeFolder,
        checkFolders,
        listSettings,
        getSetting,
        setSetting,
        coverage,
        activity,
        memory,
        saveSnapshot,
        listSnapshots,
        showSnapshot,
        compareSnapshot,
        deleteSnapshot,
        exportHistory,
        previewImport,
        importHistory,
    };

    /// Which events are shown.
    struct View {
        /// How far back: "7d", "12h", "3w" or a date.
        std::string since;
        /// The same by the name of a time window, or as a number of days.
        std::string window;
        std::set<EventCategory> categories;
        WorkspaceDestination place = WorkspaceDestination::timeline;
        std::string search;
    };

    Command command = Command::none;
    bool json = false;
    View view;
    std::optional<std::size_t> limit;
    /// `timeline`: how much there is in each place, instead of the events.
    bool counts = false;
    /// `setSchedule`: the new value.
    std::string schedule;
    std::string path;
    std::vector<std::string> purposes;
    bool on = true;
    std::string key;
    std::string value;
    /// `capture`: "recommended" or "none" when the folder set-up is to be done first.
    std::string setup;
    /// A named snapshot.
    std::string name;
    /// `compareSnapshot`: what was recorded since, instead of the two states.
    bool sinceSnapshot = false;
    /// Nothing is asked.
    bool yes = false;
    HistoryExport::Format format = HistoryExport::Format::csv;
    bool includePrivate = false;
    /// `exportHistory`: the file; standard output when empty.
    std::string output;
    /// `import`: tell what there is, and add nothing.
    bool preview = false;
    /// With updates of the system's own data.
    bool includeRoutine = false;
};

/// Adds the commands to a command line; the one that it finds ends in `into`.
void addRecorderCommands(CLI::App& app, RecorderArguments& into);

/// The arguments of a request from another process. Throws `Error` when they are wrong.
RecorderArguments parseRecorderArguments(const std::vector<std::string>& arguments);

} // namespace tidemark
