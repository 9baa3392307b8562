#include "cli/recorder/RecorderCommands.h"

#include "app/base/Background.h"
#include "app/preferences/PreferenceKeys.h"
#include "cli/recorder/HistoryText.h"
#include "core/base/Calendar.h"
#include "core/base/CanonicalPath.h"
#include "core/base/JsonEncoder.h"

#include <algorithm>

namespace tidemark::recorderCommands {

namespace {

using Command = RecorderArguments::Command;
namespace fs = std::filesystem;

std::string eventsJson(const std::vector<Shared<Event>>& events) {
    return json::encoded(events) + "\n";
}

std::string timeline(const Journal& journal, const RecorderArguments& arguments, bool colour) {
    const auto events = historyText::timeline(
        journal, historyText::sinceDate(arguments.since, Date::now()), arguments.limit);
    return arguments.json ? eventsJson(events) : historyText::timelineText(events, colour);
}

std::string coverage(const Journal& journal, const RecorderArguments& arguments) {
    const Date now = Date::now();
    return historyText::coverageText(journal, historyText::sinceDate(arguments.since, now), now);
}

std::string scheduleText(CaptureSchedule schedule) {
    return std::string(rawValue(schedule)) + ": " + std::string(label(schedule)) + "\n";
}

/// Why folders can't be read at present, by path. Blocks.
std::map<std::string, std::string> accessFailures(const std::vector<fs::path>& folders,
                                                  const std::stop_token& stop = {}) {
    std::map<std::string, std::string> failures;
    for (const auto& folder : folders)
        if (stop.stop_requested())
            break;
        else if (auto failure = directoryAccessFailure(folder))
            failures[textFromBytes(folder.native())] = std::move(*failure);
    return failures;
}

std::vector<fs::path> foldersOf(const FolderAccess& access) {
    std::vector<fs::path> folders;
    for (const auto& grant : access.grants())
        folders.emplace_back(grant.path);
    for (const auto& recommended : access.recommendedFolders())
        folders.push_back(recommended.url);
    return folders;
}

historyText::Status statusOf(const Journal& journal, const Preferences& preferences,
                             std::size_t folders) {
    historyText::Status status;
    status.mode = tidemark::read(preferences, preference::recordingMode);
    status.activity = status.mode == "paused" ? "Paused" : "No recorder runs";
    const auto schedule = json::fromRawValue<CaptureSchedule>(
        tidemark::read(preferences, preference::captureSchedule));
    status.schedule = label(schedule.value_or(CaptureSchedule::halfHourly));
    if (!journal.snapshots.empty())
        status.lastCapture = journal.snapshots.back()->timestamp;
    status.snapshots = static_cast<std::int64_t>(journal.snapshots.size());
    status.events = static_cast<std::int64_t>(journal.events.size());
    status.folders = static_cast<std::int64_t>(folders);
    if (auto problem = preferences.problem())
        status.problems.push_back(std::move(*problem));
    return status;
}

std::string shown(const historyText::Status& status, bool asJson) {
    return asJson ? json::encoded(status) + "\n" : historyText::statusText(status);
}

/// The commands in the process that has the data folder.
class Session {
public:
    Session(Recorder& with, RecorderArguments given, Circumstances around)
        : recorder(with), model(with.model()), arguments(std::move(given)),
          circumstances(std::move(around)) {}

    QCoro::Task<std::string> run() {
        // GCC 12 spoils an awaited task unless it stands alone or initialises a variable.
        std::optional<QCoro::Task<std::string>> slow;
        switch (arguments.command) {
        case Command::capture:
            slow = capture();
            break;
        case Command::status:
            co_return shown(status(), arguments.json);
        case Command::timeline:
            co_return timeline(model.state().journal(), arguments, circumstances.colour);
        case Command::coverage:
            co_return coverage(model.state().journal(), arguments);
        case Command::pause:
            co_return setMode(RecordingMode::paused);
        case Command::resume:
            co_return setMode(RecordingMode::recording);
        case Command::schedule:
            co_return schedule();
        case Command::listFolders:
            slow = listFolders();
            break;
        case Command::addFolder:
            slow = addFolder();
            break;
        case Command::trackFolder:
        case Command::removeFolder:
            co_return changeFolder();
        case Command::checkFolders:
            slow = checkFolders();
            break;
        case Command::listSettings:
            co_return historyText::settingsText(recorder.preferences());
        case Command::getSetting:
            co_return historyText::settingText(recorder.preferences(), arguments.key);
        case Command::setSetting:
            co_return setSetting();
        case Command::none:
            throw Error("There is no such command.");
        }
        std::string output = co_await *slow;
        co_return output;
    }

    /// Throws when what the command changed will not outlive this process.
    void requireStored() const {
        const auto& preferences = recorder.preferences();
        if (arguments.isReading() || arguments.command == Command::capture
            || preferences.isStored())
            return;
        throw Error(preferences.problem().value_or("The settings could not be stored."));
    }

private:
    ModelState& state() { return model.state(); }
    FolderAccess& folders() { return model.folderAccess(); }

    void requireHistory() {
        if (!*state().loaded)
            throw Error(state().error->value_or("The history has not been read yet; try again."));
    }

    QCoro::Task<std::string> capture() {
        const std::size_t eventsBefore = state().journal().events.size();
        const std::optional<Date> before = state().lastCapture();
        if (!arguments.setup.empty())
            co_await setUp(recorder, arguments.setup);
        else if (!tidemark::read(recorder.preferences(), preference::folderSetupCompleted))
            folders().completeSetup();
        // Starting takes a capture by itself when one is due.
        co_await model.start();
        requireHistory();
        if (!state().canRecord())
            throw Error("Recording is paused; tidemark resume takes it up again.");
        if (circumstances.isRunning || state().lastCapture() == loadedCapture(before))
            co_await model.scan(true);
        if (state().error->has_value())
            throw Error(**state().error);
        if (state().lastCapture() == before)
            throw Error("Another operation is running; try again in a moment.");
        co_return captured(eventsBefore);
    }

    /// In a process of its own the journal is read by the start: what is there then and was not
    /// taken since counts as the last one.
    std::optional<Date> loadedCapture(std::optional<Date> before) {
        const auto last = state().lastCapture();
        return last && *last < started ? last : before;
    }

    std::string captured(std::size_t eventsBefore) {
        const auto& events = state().journal().events;
        std::vector<Shared<Event>> added;
        const Date capture = state().lastCapture().value_or(Date::distantPast());
        for (std::size_t i = std::min(eventsBefore, events.size()); i < events.size(); ++i)
            if (events[i]->id.find(latestId()) != std::string::npos)
                added.push_back(events[i]);
        if (arguments.json)
            return eventsJson(added);
        const std::string head =
            "Captured " + Calendar().format(capture, "d MMM yyyy, HH:mm:ss") + ".\n";
        return head
               + (added.empty() ? "Nothing changed since the capture before.\n"
                                : historyText::timelineText(added, circumstances.colour));
    }
    std::string latestId() { return state().latest() ? state().latest()->id.text() : " "; }

    historyText::Status status() {
        auto status =
            statusOf(state().journal(), recorder.preferences(), folders().grants().size());
        status.running = circumstances.isRunning;
        status.activity = model.recordingStatus();
        status.nextCapture = model.nextAutomaticCapture();
        for (const auto& problem : {*state().error, *state().activityError})
            if (problem)
                status.problems.push_back(*problem);
        if (!tidemark::read(recorder.preferences(), preference::folderSetupCompleted))
            status.problems.emplace_back(
                "No folders have been chosen yet; captures wait for tidemark folders.");
        return status;
    }

    std::string setMode(RecordingMode mode) {
        if (circumstances.isRunning) {
            if (!model.canChangeRecording())
                throw Error("Recording can't be changed at this moment; try again.");
            model.setRecordingMode(mode);
        } else {
            storeMode(mode);
        }
        return mode == RecordingMode::paused ? "Recording is paused.\n"
                                             : "Recording, with a new starting point.\n";
    }

    /// What a recorder that starts later goes by.
    void storeMode(RecordingMode mode) {
        auto& preferences = recorder.preferences();
        if (mode == RecordingMode::paused)
            preferences.set(preference::needsRecordingBaseline.name, true);
        if (!preferences.set(preference::recordingMode.name, std::string(rawValue(mode))))
            throw Error(preferences.problem().value_or("The setting could not be stored."));
    }

    std::string schedule() {
        if (!arguments.schedule.empty())
            model.setCaptureSchedule(*json::fromRawValue<CaptureSchedule>(arguments.schedule));
        return scheduleText(*state().captureSchedule);
    }

    std::string setSetting() {
        // These two are more than a stored value: something happens with them.
        if (arguments.key == preference::recordingMode.name && arguments.value == "paused")
            return setMode(RecordingMode::paused);
        if (arguments.key == preference::recordingMode.name && arguments.value == "recording")
            return setMode(RecordingMode::recording);
        historyText::setSetting(recorder.preferences(), arguments.key, arguments.value);
        if (arguments.key == preference::captureSchedule.name)
            model.setCaptureSchedule(*json::fromRawValue<CaptureSchedule>(arguments.value));
        return historyText::settingText(recorder.preferences(), arguments.key);
    }

    QCoro::Task<std::string> listFolders() {
        const auto paths = foldersOf(folders());
        const auto look = [paths](const std::stop_token& stop) {
            return accessFailures(paths, stop);
        };
        const auto failures = co_await runInBackground(look, circumstances.stop);
        co_return historyText::foldersText(folders(), failures);
    }

    QCoro::Task<std::string> addFolder() {
        const fs::path folder = canonicalPath(circumstances.directory / arguments.path);
        const FolderPurposes wanted = purposes();
        model.beginFolderManagement();
        std::exception_ptr failure;
        std::vector<fs::path> added{folder};
        FolderAccess::PurposesOf purposesOf = [wanted](const fs::path& path) {
            return wanted.empty() ? FolderGrant::suggestedPurposes(path) : wanted;
        };
        try {
            co_await folders().add(std::move(added), std::move(purposesOf));
        } catch (...) {
            failure = std::current_exception();
        }
        finishFolders();
        if (failure)
            std::rethrow_exception(failure);
        co_return "Monitoring " + oneLine(textFromBytes(folder.native())) + ".\n";
    }

    std::string changeFolder() {
        const std::string path =
            textFromBytes(canonicalPath(circumstances.directory / arguments.path).native());
        const auto grant = std::ranges::find(folders().grants(), path, &FolderGrant::path);
        if (grant == folders().grants().end())
            throw Error(oneLine(path) + " is not monitored.");
        const Uuid id = grant->id;
        model.beginFolderManagement();
        if (arguments.command == Command::removeFolder)
            folders().remove(id);
        else
            folders().setTracking(*purposes().begin(), arguments.on, id);
        finishFolders();
        if (folders().message())
            throw Error(*folders().message());
        return arguments.command == Command::removeFolder
                   ? oneLine(path) + " is monitored no longer.\n"
                   : oneLine(path) + " is " + (arguments.on ? "" : "no longer ") + "read for "
                         + arguments.purposes.front() + ".\n";
    }

    QCoro::Task<std::string> checkFolders() {
        model.beginFolderManagement();
        co_await model.checkRecommendedAccess();
        finishFolders();
        co_return folders().message().value_or("") + "\n";
    }

    FolderPurposes purposes() const {
        FolderPurposes chosen;
        for (const auto& text : arguments.purposes)
            if (const auto purpose = json::fromRawValue<FolderPurpose>(text))
                chosen.insert(*purpose);
        return chosen;
    }

    /// A capture that follows a changed choice is not waited for; without a recorder there is none.
    void finishFolders() {
        if (circumstances.isRunning)
            recorder.tasks().start(model.finishFolderManagement());
        else
            folders().completeSetup();
    }

    Recorder& recorder;
    AppModel& model;
    const RecorderArguments arguments;
    const Circumstances circumstances;
    const Date started = Date::now();
};

} // namespace

QCoro::Task<std::string> carryOut(Recorder& recorder, RecorderArguments arguments,
                                  Circumstances circumstances) {
    const auto hold = recorder.tasks().hold();
    Session session(recorder, std::move(arguments), std::move(circumstances));
    std::string output = co_await session.run();
    session.requireStored();
    co_return output;
}

std::string read(const RecorderPlaces& places, const RecorderArguments& arguments, bool colour) {
    JsonPreferences preferences(places.settings);
    switch (arguments.command) {
    case Command::listSettings:
        return historyText::settingsText(preferences);
    case Command::getSetting:
        return historyText::settingText(preferences, arguments.key);
    case Command::schedule:
        return scheduleText(json::fromRawValue<CaptureSchedule>(
                                tidemark::read(preferences, preference::captureSchedule))
                                .value_or(CaptureSchedule::halfHourly));
    case Command::listFolders: {
        const FolderAccess access(preferences, BookmarkOperations::direct());
        return historyText::foldersText(access, accessFailures(foldersOf(access)));
    }
    default:
        break;
    }
    const Journal journal = JournalStore(places.files.journal()).load();
    switch (arguments.command) {
    case Command::timeline:
        return timeline(journal, arguments, colour);
    case Command::coverage:
        return coverage(journal, arguments);
    default: {
        const FolderAccess access(preferences, BookmarkOperations::direct());
        return shown(statusOf(journal, preferences, access.grants().size()), arguments.json);
    }
    }
}

QCoro::Task<void> setUp(Recorder& recorder, std::string choice) {
    auto& folders = recorder.model().folderAccess();
    if (choice == "recommended") {
        auto all = folders.recommendedFolders();
        co_await folders.enableReadableRecommended(std::move(all));
    }
    folders.completeSetup();
}

} // namespace tidemark::recorderCommands
