#include "recorder/Recorder.h"

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

Recorder::Recorder(const RecorderPlaces& where)
    : where(where), held(taken(where.files.directory)),
      stored(where.settings, JsonPreferences::Opening::toWrite, Clock::system(), held.guard()),
      state(stored, AppClock::system().now()),
      memory({.url = where.files.memoryHistory(),
              .preferences = stored,
              .workspaceCenter = workspaceCenter,
              .collectionAllowed = [this] { return state.canRecord(); },
              .guard = held.guard()}),
      live({.state = state,
            .activityURL = where.files.systemActivity(),
            .workspaceCenter = workspaceCenter,
            .memory = memory,
            .guard = held.guard()}),
      appModel({.state = state,
                .live = live,
                .preferences = stored,
                .files = where.files,
                .applicationCenter = applicationCenter,
                .workspaceCenter = workspaceCenter,
                .guard = held.guard()}) {
    auto& screen = appModel.history();
    QObject::connect(&memory, &MemoryHistoryService::changed, &screen,
                     [this, &screen] { screen.setMemory(memory.archive()); });
}

SettingSources Recorder::sources() {
    // The windows read their settings whenever they are opened.
    std::set<SettingSource> present{SettingSource::windows};
    std::map<SettingSource, std::string> reasons;
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
    return SettingSources(std::move(present), std::move(reasons));
}

RecordedHistory Recorder::recorded() const {
    return {.journal = *state.journal(),
            .activity = state.systemActivity(),
            .memory = memory.archive(),
            .activityProblem = *state.activityError,
            .memoryProblem = memory.failure()};
}

} // namespace tidemark
