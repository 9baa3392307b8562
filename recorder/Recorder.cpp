#include "recorder/Recorder.h"

#include "app/ports/SystemServices.h"
#include "app/preferences/PreferenceKeys.h"
#include "core/base/Files.h"
#include "core/capture/AdditionalPlaces.h"
#include "core/system/SystemFacts.h"

#include <algorithm>

namespace tidemark {

FolderLock Recorder::taken(const std::filesystem::path& folder) {
    createPrivateFolders(folder);
    auto lock = FolderLock::take(folder);
    if (!lock)
        throw FolderTaken(lock.error().sentence());
    return *std::move(lock);
}

Recorder::Recorder(const RecorderPlaces& where, Windows windows)
    : where(where), held(taken(where.files.directory)),
      stored(where.settings, JsonPreferences::Opening::toWrite, Clock::system(), held.guard()),
      state(stored, AppClock::system().now()), clipboard(stored, systemServices::clipboard()),
      fileCollector({.preferences = stored, .index = systemServices::fileIndex()}),
      applicationCollector(stored, systemServices::applications()),
      memory({.url = where.files.memoryHistory(),
              .preferences = stored,
              .workspaceCenter = workspaceCenter,
              .collectors = {&fileCollector, &applicationCollector, &clipboard},
              .collectionAllowed = [this] { return state.canRecord(); },
              .guard = held.guard()}),
      monitors(stored, workspaceCenter),
      live({.state = state,
            .activityURL = where.files.systemActivity(),
            .workspaceCenter = workspaceCenter,
            .memory = memory,
            .guard = held.guard(),
            .monitors = monitors.inOrder(),
            .battery = [this] { return monitors.batteryReading(); }}),
      appModel({.state = state,
                .live = live,
                .preferences = stored,
                .files = where.files,
                .applicationCenter = applicationCenter,
                .workspaceCenter = workspaceCenter,
                .guard = held.guard(),
                .showsHistory = windows == Windows::some}),
      notices(state, stored, systemServices::desktopNotifications,
              [this](const std::string& eventID) { return openingOf(eventID); }) {
    auto& screen = appModel.history();
    QObject::connect(&memory, &MemoryHistoryService::changed, &screen,
                     [this, &screen] { screen.setMemory(memory.archive()); });
    monitors.announceChangesTo(state);
    QObject::connect(&clipboard, &ClipboardHistory::changed, &state, &ModelState::noteChange);
}

std::vector<MonitorStatus> Recorder::monitorStatuses() const {
    auto statuses = monitors.statuses();
    statuses.push_back({"Recent files", fileCollector.status()});
    if (read(stored, preferenceKeys::memoryClipboard))
        statuses.push_back({"Clipboard", clipboard.status()});
    return statuses;
}

SettingSources Recorder::sources(const Preferences& preferences) {
    NotificationCenter silent;
    return sourcesOf(LiveMonitors(preferences, silent), {});
}

SettingSources Recorder::presentSources() const {
    std::map<SettingSource, std::string> reasons;
    if (!clipboard.absence().empty())
        reasons[SettingSource::clipboard] = clipboard.absence();
    return sourcesOf(monitors, std::move(reasons));
}

SettingSources Recorder::sourcesOf(const LiveMonitors& monitors,
                                   std::map<SettingSource, std::string> reasons) {
    reasons.merge(monitors.absences());
    std::set<SettingSource> present = monitors.sources();
    for (const auto& [absent, reason] : reasons)
        present.erase(absent);
    // Present even while no window is open: a window reads these settings when it is opened.
    present.insert(SettingSource::windows);
    std::error_code error;
    const auto isFolder = [&](const std::filesystem::path& path) {
        return std::filesystem::is_directory(path, error);
    };
    const auto places = AdditionalPlaces::standard(SystemFacts::homeDirectory());
    if (std::ranges::any_of(places.cellars, isFolder))
        present.insert(SettingSource::formulas);
    else
        reasons[SettingSource::formulas] = "Homebrew is not installed.";
    if (std::ranges::any_of(places.diagnostics, isFolder))
        present.insert(SettingSource::diagnosticReports);
    else
        reasons[SettingSource::diagnosticReports] = "No folder of crash reports is there.";
    if (const auto absence = systemServices::clipboardAbsence(); absence && !absence->empty())
        reasons[SettingSource::clipboard] = *absence;
    else if (!absence && !reasons.contains(SettingSource::clipboard))
        present.insert(SettingSource::clipboard);
    if (const auto absence = systemServices::desktopNotificationsAbsence(); !absence)
        present.insert(SettingSource::notifications);
    else if (!absence->empty())
        reasons[SettingSource::notifications] = *absence;
    if (systemServices::hasFileIndex())
        present.insert(SettingSource::recentFiles);
    if (auto reason = systemServices::applicationsAbsence())
        reasons[SettingSource::applicationLaunches] = *std::move(reason);
    else
        present.insert(SettingSource::applicationLaunches);
    return SettingSources(std::move(present), std::move(reasons));
}

std::function<void()> Recorder::openingOf(const std::string& eventID) const {
    if (!programRequests.showEvent)
        return {};
    // The windows may be gone when it is called.
    return [this, eventID] {
        if (programRequests.showEvent)
            programRequests.showEvent(eventID);
    };
}

RecordedHistory Recorder::recorded() const {
    return {.journal = *state.journal(),
            .activity = state.systemActivity(),
            .memory = memory.archive(),
            .dailySizes = appModel.dailySizes().history(),
            .runs = appModel.recorderRuns().records(),
            .activityProblem = *state.activityError,
            .memoryProblem = memory.failure(),
            .dailySizesProblem = appModel.dailySizes().problem()};
}

} // namespace tidemark
