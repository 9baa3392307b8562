#include "bench/Generator.h"
#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/memory/MemoryArchive.h"
#include "demo/DemoRecorder.h"
#include "views/workspace/TimelineView.h"

#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <fstream>

/// The main window over a history at its limits: 720 snapshots and 22,000 events.

using namespace tidemark;

namespace {

constexpr int frames = 300;
constexpr int letters = 20;

demo::MadeUpHistory historyAtItsLimits(Date now) {
    demo::MadeUpHistory history;
    history.journal = bench::journalAtItsLimits();
    for (int i = 0; i < 2000; ++i) {
        auto record = SystemActivity::observed(i % 2 == 0 ? SystemActivity::Kind::sleepRequested
                                                          : SystemActivity::Kind::woke,
                                               now + -900.0 * (2000 - i));
        history.activity.push_back(std::move(record));
    }
    for (std::size_t i = 0; i < MemoryArchive::otherLimit; ++i) {
        const Date at = now + -200.0 * static_cast<double>(i);
        const std::string path = "/home/ada/Documents/File " + std::to_string(i) + ".odt";
        auto record = MemoryRecord::make(MemoryRecord::Kind::appLaunched, at, "Application", path,
                                         {}, {}, at);
        history.memory.push_back(std::move(record));
    }
    return history;
}

void handleEvents() {
    for (int round = 0; round < 10; ++round)
        QApplication::processEvents();
}

QCoro::Task<void> open(demo::DemoRecorder& recorder) {
    co_await recorder.open();
}

/// Resident memory in megabytes.
double resident() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:"))
            return std::stod(line.substr(6)) / 1024;
    return 0;
}

struct Opened {
    explicit Opened(const std::filesystem::path& folder, Date now)
        : recorder(folder, historyAtItsLimits(now), now) {
        recorder.preferences().set("historyTimeWindow", std::string("all"));
    }

    void measureStart() {
        using clock = std::chrono::steady_clock;
        const auto begin = clock::now();
        const auto since = [&] {
            return std::chrono::duration<double>(clock::now() - begin).count();
        };
        recorder.uses().tasks.start(open(recorder));
        window.emplace(recorder.uses());
        window->show();
        window->grab();
        const double frame = since();
        while (!recorder.model().state().loaded())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        const double read = since();
        handleEvents();
        window->grab();
        bench::row("the window itself", frame, "s", 0.3);
        bench::row("start to the first painted content", since(), "s", 0.8);
        bench::row("  of which reading the history", read, "s");
    }

    TimelineView& list() const { return *window->findChild<TimelineView*>(); }

    void measureFrames() {
        auto& bar = *list().verticalScrollBar();
        std::vector<double> times;
        for (int i = 0; i < frames; ++i) {
            bar.setValue(bar.maximum() / frames * i);
            times.push_back(1000 * bench::seconds([&] { list().viewport()->repaint(); }));
        }
        bench::row("a frame while scrolling, median", bench::median(times), "ms", 4);
        bench::row("a frame while scrolling, worst", std::ranges::max(times), "ms", 16);
    }

    /// Reading in the middle of the list while a capture is saved.
    void measureCapture() {
        auto& bar = *list().verticalScrollBar();
        bar.setValue(bar.maximum() / 2);
        handleEvents();
        const QModelIndex top = list().indexAt({1, 1});
        const QString id = top.data(TimelineModel::idRole).toString();
        Journal next = *recorder.model().state().journal();
        Snapshot snapshot = bench::snapshotOf(250, 60, 12, 60, 1000);
        next.append(Shared(std::move(snapshot)), true);
        recorder.model().state().setJournal(std::move(next));
        const double time = 1000 * bench::seconds([] { handleEvents(); });
        bench::row("a new capture while reading, on the event loop", time, "ms", 20);
        if (list().indexAt({1, 1}).data(TimelineModel::idRole).toString() != id)
            bench::row("the place was lost", 1, "", 0.5);
    }

    void measureSearch() {
        auto& field = *window->findChild<QLineEdit*>();
        std::vector<double> times;
        for (int i = 0; i < letters; ++i)
            times.push_back(1000 * bench::seconds([&] {
                                field.setText(QStringLiteral("application").left(i % 11 + 1));
                                handleEvents();
                                list().viewport()->repaint();
                            }));
        field.clear();
        bench::row("a letter in the search field, median", bench::median(times), "ms", 50);
        bench::row("a letter in the search field, worst", std::ranges::max(times), "ms");
    }

    /// Of a second window, beside what the first one has loaded of Qt.
    void measureMemory() {
        const double before = resident();
        WorkspaceWindow second(recorder.uses());
        second.show();
        handleEvents();
        second.grab();
        bench::row("memory of a window", resident() - before, "MB", 60);
    }

    demo::DemoRecorder recorder;
    std::optional<WorkspaceWindow> window;
};

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QIcon::setThemeName(QStringLiteral("breeze"));
    const bench::Workspace folder;
    // The journal of the generator ends then.
    const Date now{750'000'000 + 720 * 1800.0};
    Opened opened(folder.path(), now);
    opened.measureStart();
    opened.measureFrames();
    opened.measureCapture();
    opened.measureSearch();
    opened.measureMemory();
}
