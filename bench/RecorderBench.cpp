// The recorder with a journal at its limits: how soon it replies, how long its event loop is
// blocked, its memory, and its processor time while nothing happens.
//
// bench_recorder              measures all but the idle processor time
// bench_recorder idle [MIN]   measures the idle processor time, over MIN minutes (10)

#include "app/base/Background.h"
#include "app/model/AppModel.h"
#include "app/model/LiveWiring.h"
#include "app/preferences/JsonPreferences.h"
#include "app/preferences/PreferenceKeys.h"
#include "bench/Generator.h"
#include "bench/RecorderProcess.h"
#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/capture/SystemObserver.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTimer>
#include <fstream>

#include <time.h>

using namespace tidemark;
using bench::RecorderProcess;
namespace fs = std::filesystem;

namespace {

constexpr int starts = 5;
constexpr int captures = 5;

/// The longest time for which the event loop was blocked, in milliseconds: by the clock, and in
/// processor time of this thread, which other programs don't influence.
class LoopWatch {
public:
    LoopWatch() {
        timer.setTimerType(Qt::PreciseTimer);
        timer.callOnTimeout([this] { look(); });
        timer.start(1);
    }
    void restart() {
        lastWall = now(CLOCK_MONOTONIC);
        lastOwn = now(CLOCK_THREAD_CPUTIME_ID);
        wall = own = 0;
    }
    void look() {
        wall = std::max(wall, now(CLOCK_MONOTONIC) - lastWall);
        own = std::max(own, now(CLOCK_THREAD_CPUTIME_ID) - lastOwn);
        lastWall = now(CLOCK_MONOTONIC);
        lastOwn = now(CLOCK_THREAD_CPUTIME_ID);
    }

    double wall = 0;
    double own = 0;

private:
    static double now(clockid_t which) {
        timespec time{};
        ::clock_gettime(which, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }

    QTimer timer;
    double lastWall = now(CLOCK_MONOTONIC);
    double lastOwn = now(CLOCK_THREAD_CPUTIME_ID);
};

void makeFolders(const fs::path& root) {
    for (int folder = 0; folder < 100; ++folder) {
        const fs::path path = root / ("folder " + std::to_string(folder));
        fs::create_directories(path);
        for (int file = 0; file < 50; ++file)
            std::ofstream(path / std::to_string(file)) << "some bytes";
    }
}

/// A capture with `options`, to which generated items are added, so that it is as large as the
/// snapshots before it.
Snapshot observeMuch(const ObservationOptions& options, std::size_t generation,
                     const std::stop_token& stop) {
    const Snapshot real = SystemObserver::captureProgressively(
        options, nullptr, [](const std::string&) {}, Clock::system(), stop);
    Snapshot much = bench::snapshotOf(250, 60, 12, 60, generation);
    much.folders.insert(much.folders.end(), real.folders.begin(), real.folders.end());
    much.timestamp = real.timestamp;
    return much;
}

void runToEnd(const QCoro::Task<void>& task) {
    while (!task.isReady())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void measureBlocks(const fs::path& folder) {
    const fs::path root = folder / "Stuff";
    makeFolders(root);
    JsonPreferences preferences(folder / "config/settings.json");
    preferences.set(preferenceKeys::captureSchedule.name, std::string("manual"));
    preferences.set(preferenceKeys::folderSetupCompleted.name, true);
    NotificationCenter application;
    NotificationCenter workspace;
    std::size_t generation = Journal::snapshotLimit;
    Observe observe = [&generation](const ObservationOptions& options, std::stop_token stop) {
        const auto work = [options, number = ++generation](const std::stop_token& stopped) {
            return observeMuch(options, number, stopped);
        };
        return runInBackground(work, std::move(stop));
    };
    ModelState state(preferences, AppClock::system().now());
    MemoryHistoryService memory({.url = folder / "memory-history.json",
                                 .preferences = preferences,
                                 .workspaceCenter = workspace});
    LiveWiring live({.state = state,
                     .activityURL = folder / "system-activity.json",
                     .workspaceCenter = workspace,
                     .memory = memory});
    AppModel model({.state = state,
                    .live = live,
                    .preferences = preferences,
                    .files = {folder, {}},
                    .applicationCenter = application,
                    .workspaceCenter = workspace,
                    .home = folder,
                    .observe = std::move(observe)});
    runToEnd(model.folderAccess().add({root}, FolderGrant::suggestedPurposes));

    LoopWatch watch;
    const auto tell = [&](const char* what) {
        watch.look();
        bench::row(std::string("longest block of the event loop, ") + what, watch.wall, "ms", 50);
        bench::row("  longest processor time of one", watch.own, "ms");
        watch.restart();
    };
    watch.restart();
    runToEnd(model.start());
    tell("load");
    if (model.state().journal()->snapshots.size() != Journal::snapshotLimit)
        throw std::runtime_error("the journal was not loaded");
    for (int capture = 0; capture < captures; ++capture)
        runToEnd(model.scan());
    tell("captures and saves");
    if (*model.state().error || generation != Journal::snapshotLimit + captures)
        throw std::runtime_error("not every capture was saved");
}

void measureStart(const fs::path& folder, double document) {
    std::vector<double> answer;
    std::vector<double> history;
    std::vector<double> loaded;
    std::vector<double> captured;
    for (int round = 0; round < starts; ++round) {
        RecorderProcess recorder(folder);
        answer.push_back(recorder.secondsUntil("\"running\":true"));
        history.push_back(recorder.secondsUntil("\"snapshots\":720"));
        loaded.push_back(recorder.residentBytes() / document);
        recorder.command({"capture"});
        captured.push_back(recorder.residentBytes() / document);
    }
    bench::row("start to the first answer of status", bench::median(answer), "s", 2);
    bench::row("start to the first answer that knows the history", bench::median(history), "s", 2);
    bench::row("resident after load / document", bench::median(loaded), "x", 3);
    bench::row("resident after capture and save / document", bench::median(captured), "x", 3);
}

void measureIdle(const fs::path& folder, double minutes) {
    RecorderProcess recorder(folder);
    recorder.secondsUntil("\"snapshots\":720");
    recorder.command({"capture"});
    // The threads of the capture end after half a minute.
    recorder.wait(60);
    const auto before = recorder.effort();
    recorder.wait(minutes * 60);
    const auto after = recorder.effort();
    std::printf("%.0f minutes: %.3f s of processor time, %lld wakeups\n", minutes,
                after.seconds - before.seconds,
                static_cast<long long>(after.wakeups - before.wakeups));
    bench::row("idle, share of one core", (after.seconds - before.seconds) / minutes / 60 * 100,
               "%", 0.2);
    bench::row("idle, wakeups a minute",
               static_cast<double>(after.wakeups - before.wakeups) / minutes, "", 5);
}

} // namespace

int main(int argc, char** argv) {
    QLoggingCategory::setFilterRules("app.tidemark.captures=false");
    const QCoreApplication application(argc, argv);
    const bench::Workspace workspace;
    const fs::path data = workspace.path() / "data/Tidemark";
    JournalStore(data / "journal.json").save(bench::journalAtItsLimits());
    const auto document = static_cast<double>(fs::file_size(data / "journal.json"));
    RecorderProcess::prepare(workspace.path());
    if (argc > 1 && std::string_view(argv[1]) == "idle") {
        measureIdle(workspace.path(), argc > 2 ? std::strtod(argv[2], nullptr) : 10);
        return 0;
    }
    measureStart(workspace.path(), document);
    measureBlocks(data);
}
