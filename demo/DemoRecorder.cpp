#include "demo/DemoRecorder.h"

#include "core/capture/SystemObserver.h"
#include "core/journal/JournalStore.h"

#include <array>

namespace tidemark::demo {

namespace {

constexpr std::array stages{SystemObserver::inventoryPhase, "Scanning Documents…",
                            "Scanning Projects…", SystemObserver::savingPhase};

/// All sources that a screen depends on, so that no screen reports a missing source.
SettingSources everySource() {
    using enum SettingSource;
    return SettingSources({formulas, diagnosticReports, network, wifiNames, bluetooth, environment,
                           battery, recentFiles, applicationLaunches, clipboard, windows});
}

/// The home of the made-up user. Even if this machine has such a folder, nothing in it is read.
const std::filesystem::path home = "/home/ada";

/// The installations in the log of the made-up machine's package manager.
InstallationPreview madeUpInstallations(Date now) {
    constexpr double day = 86'400;
    InstallationPreview preview{
        .records = {}, .skippedRecords = 0, .since = now + -7 * day, .through = now};
    for (const auto& [name, version, daysAgo, source] :
         std::initializer_list<std::tuple<const char*, const char*, double, std::string_view>>{
             {"Draw", "4.8", 0.1, InstallationRecord::otherSource},
             {"Easel Studio", "2.1", 0.2, InstallationRecord::otherSource},
             {"Scanner Drivers", "1.2.3", 3.2, InstallationRecord::otherSource},
             {"Colour Profiles", "20", 3.2, InstallationRecord::automaticSource},
             {"Example Fonts", "", 5.1, InstallationRecord::otherSource}})
        preview.records.push_back({name, version, now + -daysAgo * day, std::string(source), now});
    return preview;
}

} // namespace

DemoClock::DemoClock(Date first) : start(first), started(AppClock::system().monotonicSeconds()) {}

Date DemoClock::now() {
    return start + (AppClock::system().monotonicSeconds() - started);
}

/// The made-up records of live activity and of the memory history; records nothing more.
class DemoRecorder::Services final : public LiveServices {
public:
    explicit Services(DemoRecorder& demo) : recorder(demo) {}

    QCoro::Task<void> loadMemory() override {
        co_await recorder.memory.load();
        recorder.memory.update(recorder.made.memory);
        recorder.state.setSystemActivity(recorder.made.activity);
    }
    void startActivityMonitors() override {}
    void startMemory() override {}
    void stop() override {}
    std::optional<std::string> memoryFailure() const override { return {}; }

private:
    DemoRecorder& recorder;
};

DemoRecorder::DemoRecorder(const std::filesystem::path& folder, MadeUpHistory history, Date now)
    : made(std::move(history)), clock(now),
      stored(folder / "settings.json", JsonPreferences::Opening::toWrite), state(stored, now),
      clipboard(stored, nullptr), fileCollector({.preferences = stored, .index = nullptr}),
      memory({.url = folder / "memory-history.json",
              .preferences = stored,
              .workspaceCenter = workspaceCenter,
              .clock = clock}),
      live(std::make_unique<Services>(*this)),
      appModel({.state = state,
                .live = *live,
                .preferences = stored,
                .files = {folder, {}},
                .applicationCenter = applicationCenter,
                .workspaceCenter = workspaceCenter,
                .clock = clock,
                .home = home,
                .recommended = RecommendedFolder::current(home),
                .observe = [this](const ObservationOptions&,
                                  std::stop_token stop) { return observe(std::move(stop)); },
                .collectInstallations = madeUpInstallations}),
      viewSettings(stored), sources(everySource()) {
    if (!made.journal.snapshots.empty())
        JournalStore(folder / "journal.json").save(made.journal);
    auto& screen = appModel.history();
    QObject::connect(&memory, &MemoryHistoryService::changed, &screen,
                     [this, &screen] { screen.setMemory(memory.archive()); });
}

QCoro::Task<void> DemoRecorder::open() {
    stored.set("folderSetupCompleted", true);
    co_await appModel.openHistory();
}

QCoro::Task<void> DemoRecorder::setUp() {
    co_await appModel.start();
}

QCoro::Task<Snapshot> DemoRecorder::observe(std::stop_token stop) {
    const auto hold = tasks.hold();
    for (const char* stage : stages) {
        appModel.scanProgress().stage = stage;
        co_await clock.sleep(captureDuration / static_cast<double>(stages.size()), stop,
                             AppClock::Slack::none);
    }
    if (captureFailure)
        throw Error(*captureFailure);
    made.machine.grow("Projects", "target", 2'300'000'000);
    co_return made.machine.captured(clock.now());
}

WorkspaceWindow::Uses DemoRecorder::uses() {
    return {appModel, memory, clipboard, viewSettings, stored, [this] { return sources; }, tasks};
}

} // namespace tidemark::demo
