#include "recorder/RecorderCommands.h"

#include "app/base/Background.h"
#include "app/preferences/PreferenceKeys.h"
#include "core/base/Text.h"
#include "recorder/CaptureCommands.h"
#include "recorder/FolderCommands.h"
#include "recorder/HistoryCommands.h"
#include "recorder/ImportCommands.h"
#include "recorder/SettingCommands.h"
#include "recorder/SnapshotCommands.h"
#include "recorder/StatusCommand.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace tidemark::recorderCommands {

namespace {

using Name = RecorderArguments::Command;

QCoro::Task<std::string> status(CommandContext& context) {
    co_return statusCommand::text(context);
}

/// Tells whoever has read the setting already.
void applySetting(const CommandContext& context, std::string_view key) {
    const auto& preferences = context.preferences();
    auto& model = context.model();
    if (key == preference::captureSchedule.name)
        model.setCaptureSchedule(*json::fromRawValue<CaptureSchedule>(
            tidemark::read(preferences, preference::captureSchedule)));
    if (key == preference::historyTimeWindow.name)
        model.history().setRange(tidemark::read(preferences, preference::historyTimeWindow));
    if (key == preference::historyCustomWindowDays.name)
        model.history().setCustomWindowDays(
            tidemark::read(preferences, preference::historyCustomWindowDays));
    auto& memory = context.recorder.memoryHistory();
    if (key == preference::memoryClipboardDays.name)
        memory.setClipboardDays(tidemark::read(preferences, preference::memoryClipboardDays));
    else if (key.starts_with("memory"))
        memory.reconfigure();
}

QCoro::Task<std::string> setSetting(CommandContext& context) {
    const auto& [key, value] = std::tie(context.arguments.key, context.arguments.value);
    // Something happens with these two besides.
    if (key == preference::recordingMode.name && (value == "paused" || value == "recording")) {
        auto change =
            value == "paused" ? captureCommands::pause(context) : captureCommands::resume(context);
        std::string text = co_await change;
        co_return text;
    }
    settingCommands::set(context.preferences(), key, value);
    applySetting(context, key);
    co_return settingCommands::get(context.preferences(), key);
}

/// The commands that need the data folder.
struct Action {
    Name name;
    QCoro::Task<std::string> (*carryOut)(CommandContext&);
    /// What it changes is a setting, and lost when that can't be stored.
    bool changesSettings = false;
};

constexpr auto actions = std::to_array<Action>({
    {Name::capture, captureCommands::capture},
    {Name::pause, captureCommands::pause, true},
    {Name::resume, captureCommands::resume, true},
    {Name::setSchedule, captureCommands::setSchedule, true},
    {Name::status, status},
    {Name::listFolders, folderCommands::list},
    {Name::addFolder, folderCommands::add, true},
    {Name::trackFolder, folderCommands::change, true},
    {Name::removeFolder, folderCommands::change, true},
    {Name::checkFolders, folderCommands::check, true},
    {Name::setSetting, setSetting, true},
    {Name::saveSnapshot, snapshotCommands::save},
    {Name::deleteSnapshot, snapshotCommands::remove},
    {Name::previewImport, importCommands::preview},
    {Name::importHistory, importCommands::import},
});

std::string listSettings(const Preferences& preferences, const RecorderArguments&) {
    return settingCommands::list(preferences);
}

std::string getSetting(const Preferences& preferences, const RecorderArguments& arguments) {
    return settingCommands::get(preferences, arguments.key);
}

std::string tellSchedule(const Preferences& preferences, const RecorderArguments&) {
    const auto stored = json::fromRawValue<CaptureSchedule>(
        tidemark::read(preferences, preference::captureSchedule));
    return captureCommands::scheduleText(stored.value_or(CaptureSchedule::halfHourly));
}

/// The commands that need the settings alone.
struct Answer {
    Name name;
    std::string (*text)(const Preferences&, const RecorderArguments&);
};

constexpr auto answers = std::to_array<Answer>({
    {Name::listSettings, listSettings},
    {Name::getSetting, getSetting},
    {Name::tellSchedule, tellSchedule},
});

template <class Table>
auto find(const Table& table, Name name) {
    const auto row = std::ranges::find(table, name, &Table::value_type::name);
    return row == table.end() ? nullptr : &*row;
}

/// Away from the event loop: the text of a long history takes its time.
QCoro::Task<std::string> tell(CommandContext& context, historyCommands::Command command) {
    context.requireHistory();
    const historyCommands::Reading reading{
        .history = context.recorder.recorded(),
        .arguments = context.arguments,
        .colour = context.colour,
        .stop = context.stop,
    };
    std::string text =
        co_await runInBackground([&](const std::stop_token&) { return command(reading); },
                                 context.stop, WorkPriority::userInitiated);
    co_return text;
}

} // namespace

bool isReading(Name command) {
    return historyCommands::find(command) || find(answers, command) || command == Name::status
           || command == Name::listFolders;
}

QCoro::Task<std::string> carryOut(CommandContext context) {
    const auto hold = context.recorder.tasks().hold();
    const auto name = context.arguments.command;
    if (const auto* answer = find(answers, name))
        co_return answer->text(context.preferences(), context.arguments);
    const auto reading = historyCommands::find(name);
    const auto* action = find(actions, name);
    if (!reading && !action)
        throw Error("There is no such command.");
    auto task = reading ? tell(context, reading) : action->carryOut(context);
    std::string text = co_await task;
    if (action && action->changesSettings)
        context.requireStored();
    co_return text;
}

std::string read(const RecorderPlaces& places, const RecorderArguments& arguments, bool colour) {
    JsonPreferences preferences(places.settings, JsonPreferences::Opening::toRead);
    if (const auto* answer = find(answers, arguments.command))
        return answer->text(preferences, arguments);
    const auto load = [&] {
        return RecordedHistory::load(places.files,
                                     tidemark::read(preferences, preference::memoryClipboardDays));
    };
    if (const auto command = historyCommands::find(arguments.command)) {
        const historyCommands::Reading reading{
            .history = load(), .arguments = arguments, .colour = colour};
        std::string text = command(reading);
        for (const auto& problem : {reading.history.activityProblem, reading.history.memoryProblem})
            if (problem)
                std::fprintf(stderr, "tidemark: %s\n", oneLine(*problem).c_str());
        return text;
    }
    const FolderAccess folders(preferences, BookmarkOperations::direct());
    if (arguments.command == Name::listFolders)
        return folderCommands::text(folders);
    return statusCommand::text(load(), preferences, folders, arguments.json);
}

} // namespace tidemark::recorderCommands
