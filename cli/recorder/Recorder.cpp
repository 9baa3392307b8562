#include "cli/recorder/Recorder.h"

#include "app/control/ControlProtocol.h"
#include "core/base/Files.h"
#include "core/memory/MemoryEvents.h"
#include "core/system/UserFolders.h"

namespace tidemark {

RecorderPlaces RecorderPlaces::current() {
    RecorderPlaces places;
    places.files = DataFiles::of(AppDataLocation::unbundled, UserFolders::data());
    places.settings = UserFolders::configuration()
                      / AppDataLocation::directoryName(AppDataLocation::unbundled)
                      / "settings.json";
    places.socket = control::socketPath(places.files.directory, UserFolders::runtime());
    return places;
}

FolderLock Recorder::taken(const std::filesystem::path& folder) {
    createPrivateFolders(folder);
    auto lock = FolderLock::take(folder);
    if (!lock)
        throw FolderTaken(lock.error().sentence());
    return *std::move(lock);
}

Recorder::Recorder(RecorderPlaces chosen)
    : where(std::move(chosen)), held(taken(where.files.directory)), stored(where.settings),
      memory({.url = where.files.memoryHistory(),
              .preferences = stored,
              .workspaceCenter = workspaceCenter}),
      live({.activityURL = where.files.systemActivity(),
            .workspaceCenter = workspaceCenter,
            .memory = memory}),
      appModel({.preferences = stored,
                .files = where.files,
                .applicationCenter = applicationCenter,
                .workspaceCenter = workspaceCenter,
                .ownsFolder = [this] { return held.isCurrent(); }}) {
    live.attach(appModel.state());
    auto& screen = appModel.history();
    QObject::connect(&memory, &MemoryHistoryService::archiveChanged, &screen, [this, &screen] {
        auto events = MemoryEvents::events(memory.archive());
        screen.setMemoryEvents(
            {std::make_move_iterator(events.begin()), std::make_move_iterator(events.end())});
    });
    appModel.setLiveServices(live);
}

RecordedHistory Recorder::recorded() const {
    const auto& state = appModel.state();
    return {.journal = state.journal(),
            .activity = state.systemActivity(),
            .memory = memory.archive(),
            .activityProblem = *state.activityError,
            .memoryProblem = memory.failure()};
}

} // namespace tidemark
