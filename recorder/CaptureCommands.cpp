#include "recorder/CaptureCommands.h"

#include "app/base/Background.h"
#include "app/preferences/PreferenceKeys.h"
#include "core/base/JsonEncoder.h"
#include "recorder/HistoryTime.h"
#include "recorder/TimelinePrinter.h"

namespace tidemark::captureCommands {

namespace {

std::optional<Uuid> latestId(const ModelState& state) {
    return state.latest() ? std::optional(state.latest()->id) : std::nullopt;
}

/// The events that the capture of this snapshot made; their identifiers name it.
std::vector<Shared<Event>> eventsOf(const Journal& journal, const Uuid& snapshot) {
    const std::string name = snapshot.text();
    std::vector<Shared<Event>> made;
    for (const auto& event : journal.events)
        if (event->id.find(name) != std::string::npos)
            made.push_back(event);
    return made;
}

std::string captured(const CommandContext& context, bool isCompared) {
    const auto& journal = context.state().journal();
    const auto events = eventsOf(journal, context.state().latest()->id);
    if (context.arguments.json)
        return json::encoded(events) + "\n";
    const std::string head =
        "Captured " + historyTime::moment(context.state().lastCapture()) + ".\n";
    if (!events.empty())
        return head + TimelinePrinter(Calendar(), context.colour).text(events);
    return head
           + (isCompared ? "Nothing changed since the capture before.\n"
                         : "It is a new starting point: the next one is compared with it.\n");
}

QCoro::Task<std::string> setMode(CommandContext& context, RecordingMode mode) {
    const bool wasPaused =
        read(context.preferences(), preference::recordingMode) == rawValue(RecordingMode::paused);
    if (context.isRunning) {
        if (!context.model().canChangeRecording())
            throw Error("Recording can't be changed at this moment; try again.");
        context.model().setRecordingMode(mode);
    } else {
        // A recorder that starts later goes by this.
        if (mode == RecordingMode::paused)
            context.preferences().set(preference::needsRecordingBaseline.name, true);
        context.preferences().set(preference::recordingMode.name, std::string(rawValue(mode)));
    }
    co_return mode == RecordingMode::paused ? "Recording is paused.\n"
    : wasPaused                             ? "Recording, with a new starting point.\n"
                                            : "Recording was not paused.\n";
}

} // namespace

std::vector<RecommendedFolder> readable(std::vector<RecommendedFolder> folders) {
    std::erase_if(
        folders, [](const auto& folder) { return directoryAccessFailure(folder.url).has_value(); });
    return folders;
}

QCoro::Task<void> setUp(Recorder& recorder, std::vector<RecommendedFolder> chosen) {
    const auto hold = recorder.tasks().hold();
    auto& model = recorder.model();
    if (model.state().isManagingFolders || model.state().isCheckingRecommendedAccess)
        throw Error(anotherOperation);
    model.beginFolderManagement();
    if (!chosen.empty())
        co_await model.folderAccess().enableReadableRecommended(std::move(chosen));
    if (*model.state().loaded)
        co_await model.finishFolderManagement();
    else
        model.completeFolderManagement();
}

QCoro::Task<std::string> capture(CommandContext& context) {
    auto& state = context.state();
    const auto& setup = context.arguments.setup;
    const bool isNewStart = read(context.preferences(), preference::needsRecordingBaseline);
    std::optional<Uuid> before = latestId(state);
    // Reading the history is no capture of this command.
    QObject reader;
    QObject::connect(&state, &ModelState::journalChanged, &reader, [&] {
        if (!*state.loaded)
            before = latestId(state);
    });
    if (!setup.empty()) {
        std::vector<RecommendedFolder> offered;
        if (setup == "recommended")
            offered = context.folders().recommendedFolders();
        const auto look = [offered](const std::stop_token&) { return readable(offered); };
        auto chosen = co_await runInBackground(look, context.stop);
        co_await setUp(context.recorder, std::move(chosen));
    }
    // Takes one by itself when one is due.
    co_await context.model().start();
    context.requireHistory();
    if (!state.canRecord())
        throw Error("Recording is paused; tidemark resume takes it up again.");
    const bool wasBusy = state.isScanning || state.isSaving;
    if (latestId(state) == before)
        co_await context.model().scan(true);
    if (latestId(state) == before)
        throw Error(wasBusy ? anotherOperation : state.error->value_or(anotherOperation));
    co_return captured(context, before && !isNewStart);
}

QCoro::Task<std::string> pause(CommandContext& context) {
    return setMode(context, RecordingMode::paused);
}

QCoro::Task<std::string> resume(CommandContext& context) {
    return setMode(context, RecordingMode::recording);
}

std::string scheduleText(CaptureSchedule schedule) {
    return std::string(rawValue(schedule)) + ": " + std::string(label(schedule)) + "\n";
}

QCoro::Task<std::string> setSchedule(CommandContext& context) {
    const auto schedule = *json::fromRawValue<CaptureSchedule>(context.arguments.schedule);
    context.model().setCaptureSchedule(schedule);
    co_return scheduleText(schedule);
}

} // namespace tidemark::captureCommands
