#include "app/preferences/PreferenceKeys.h"
#include "core/base/FolderLock.h"
#include "core/base/JsonEncoder.h"
#include "core/base/Text.h"
#include "core/presentation/SystemWords.h"
#include "recorder/Commands.h"
#include "recorder/HistoryTime.h"
#include "recorder/Recorder.h"
#include "recorder/RecorderStatus.h"
#include "recorder/StoredRecords.h"
#include "recorder/TypedInvocation.h"

#include <algorithm>

namespace tidemark {

namespace {

struct StatusOptions {
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{Option{"json", &StatusOptions::json, "Print JSON instead of text"}};
    }
};

RecorderStatus stored(const Journal& journal, const Preferences& preferences,
                      const FolderAccess& folders) {
    RecorderStatus status;
    status.mode = read(preferences, preferenceKeys::recordingMode);
    status.activity = status.mode == "paused" ? "Paused" : "No recorder runs";
    status.schedule = label(captureSchedule(preferences));
    if (!journal.snapshots.empty())
        status.lastCapture = journal.snapshots.back()->timestamp;
    status.snapshots = static_cast<std::int64_t>(journal.snapshots.size());
    status.events = static_cast<std::int64_t>(journal.events.size());
    status.folders = static_cast<std::int64_t>(folders.grants().size());
    if (auto problem = preferences.problem())
        status.problems.push_back(*std::move(problem));
    if (folders.message() && !folders.messageIsSuccess())
        status.problems.push_back(*folders.message());
    if (!read(preferences, preferenceKeys::folderSetupCompleted))
        status.problems.emplace_back("No folders have been chosen yet. Captures begin once they "
                                     "are chosen with tidemark folders.");
    return status;
}

void line(std::string& out, const std::string& label, const std::string& value) {
    out += label + std::string(16 - std::min<std::size_t>(label.size(), 15), ' ')
           + oneLine(systemWords::shown(value)) + "\n";
}

std::string shown(const RecorderStatus& status, bool asJson) {
    if (asJson)
        return json::encoded(status) + "\n";
    std::string out;
    line(out, "State", status.activity);
    line(out, "Schedule", status.schedule);
    line(out, "Last capture", historyTime::moment(status.lastCapture, "None yet"));
    line(out, "Next capture", nextCaptureText(status));
    line(out, "Captures kept", std::to_string(status.snapshots));
    line(out, "Events", std::to_string(status.events));
    line(out, "Folders", std::to_string(status.folders));
    for (const auto& monitor : status.monitors)
        line(out, monitor.name, monitor.text);
    for (const auto& problem : status.problems)
        line(out, "Problem", problem);
    return out;
}

QCoro::Task<std::string> status(CommandContext& context, const StatusOptions& options) {
    const auto& state = context.state();
    RecorderStatus status = stored(*state.journal(), context.preferences(), context.folders());
    status.running = context.isRunning;
    // The mode in effect; the stored one may differ, for example if the disk is full.
    if (context.isRunning && state.loaded())
        status.mode = rawValue(*state.recordingMode);
    status.activity = context.model().recordingStatus();
    if (context.isRunning)
        status.monitors = context.recorder.monitorStatuses();
    if (status.mode != "paused")
        status.nextCapture = context.model().nextAutomaticCapture();
    for (const auto& problem :
         {*state.error, *state.activityError, context.recorder.memoryHistory().failure(),
          context.model().dailySizes().problem()})
        if (problem)
            status.problems.push_back(*problem);
    co_return shown(status, options.json);
}

std::optional<CommandAnswer> storedStatus(StoredRecords& records, const StatusOptions& options) {
    auto& preferences = records.preferences();
    const RecordedHistory history = records.history();
    const FolderAccess folders(preferences, BookmarkOperations::direct());
    RecorderStatus status = stored(history.journal, preferences, folders);
    if (FolderLock::isTaken(RecorderPlaces::current().files.directory))
        status.activity = "No recorder answers, but another process uses the history";
    for (auto& problem : history.problems())
        status.problems.push_back(std::move(problem));
    return CommandAnswer{shown(status, options.json)};
}

} // namespace

Command commands::status() {
    return makeCommand<StatusOptions, &tidemark::status>(
        {
            .name = "status",
            .group = CommandGroup::recording,
            .summary = "Show whether and how the recorder is recording",
        },
        {.fromStored = storedStatus});
}

} // namespace tidemark
