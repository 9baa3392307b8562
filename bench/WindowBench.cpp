#include "bench/Generator.h"
#include "bench/RecorderProcess.h"
#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/journal/JournalStore.h"
#include "core/memory/MemoryArchive.h"
#include "demo/DemoRecorder.h"
#include "views/workspace/TimelineView.h"

#include <QApplication>
#include <QLineEdit>
#include <QProcess>
#include <QScrollBar>
#include <cstdlib>
#include <functional>

// The main window over a history at its limits: 720 snapshots and 22,000 events; and the memory and
// wakeups of the program with windows, beside those of the one without.

using namespace tidemark;
using bench::RecorderProcess;

namespace {

constexpr int frames = 300;
constexpr int letters = 20;
/// How long to wait before the wakeups of a started process are counted, and for how long they are
/// counted. When the count begins, the process must be idle and its unused threads must have ended,
/// because the wakeups of a thread that ends during the count are lost from it.
constexpr double settlingSeconds = 45;
constexpr double idleSeconds = 30;

/// A history at its limits except its journal, which the folder already has.
demo::MadeUpHistory historyAtItsLimits(Date now) {
    demo::MadeUpHistory history;
    for (int i = 0; i < 2000; ++i) {
        auto record = SystemActivity::observed(i % 2 == 0 ? SystemActivity::Kind::sleepRequested
                                                          : SystemActivity::Kind::woke,
                                               now + -900.0 * (2000 - i));
        history.activity.emplace_back(std::move(record));
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

struct Opened {
    explicit Opened(const std::filesystem::path& folder, Date now)
        : recorder(folder, historyAtItsLimits(now), now) {
        recorder.preferences().set("historyTimeWindow", std::string("all"));
    }

    /// `since` returns the seconds since the process was started.
    void measureStart(const std::function<double()>& since) {
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
        bench::row("start to the window itself", frame, "s", 0.3);
        bench::row("start to the first painted content", since(), "s", 0.8);
        bench::row("  of which until the history is read", read, "s");
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

    /// Adds a capture while the user reads in the middle of the list.
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

    demo::DemoRecorder recorder;
    std::optional<WorkspaceWindow> window;
};

/// Measures the window in this process, which was started when the steady clock was at `begin`
/// nanoseconds.
void measureWindow(const std::filesystem::path& folder, std::int64_t begin) {
    const std::chrono::duration<double> launched =
        std::chrono::steady_clock::now().time_since_epoch() - std::chrono::nanoseconds(begin);
    // The time at which the generated journal ends.
    const Date now{750'000'000 + 720 * 1800.0};
    // Makes the history, which is no part of a start.
    Opened opened(folder, now);
    const auto ready = std::chrono::steady_clock::now();
    const auto since = [&] {
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - ready;
        return launched.count() + passed.count();
    };
    opened.measureStart(since);
    opened.measureFrames();
    opened.measureCapture();
    opened.measureSearch();
}

/// Compares the memory and the wakeups of the real programs, which run one after the other.
void measureProcesses(const std::filesystem::path& home) {
    using Program = RecorderProcess::Program;
    struct Figures {
        double megabytes;
        double wakeups;
    };
    const auto figuresOf = [&](Program program) {
        const RecorderProcess process(home, program);
        process.secondsUntil("\"snapshots\":720");
        process.command({"settings", "set", "historyTimeWindow", "all"});
        process.wait(settlingSeconds);
        const auto before = process.effort().wakeups;
        process.wait(idleSeconds);
        return Figures{process.residentBytes() / 1e6,
                       static_cast<double>(process.effort().wakeups - before)};
    };
    const auto headless = figuresOf(Program::withoutWindow);
    const auto shown = figuresOf(Program::withWindow);
    const auto hidden = figuresOf(Program::withHiddenWindow);
    bench::row("memory of the recorder without windows", headless.megabytes, "MB");
    bench::row("memory above that with a window", shown.megabytes - headless.megabytes, "MB", 60);
    bench::row("wakeups in 30 s without windows", headless.wakeups, "");
    // The check that the scheduler makes each minute may fall into one of the two periods.
    bench::row("wakeups above that with the window hidden", hidden.wakeups - headless.wakeups, "",
               3);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc == 3) {
        QApplication application(argc, argv);
        QIcon::setThemeName(QStringLiteral("breeze"));
        measureWindow(argv[1], std::strtoll(argv[2], nullptr, 10));
        return 0;
    }
    const QCoreApplication application(argc, argv);
    const bench::Workspace folder;
    const auto data = folder.path() / "data/Tidemark";
    JournalStore(data / "journal.json").save(bench::journalAtItsLimits());
    // The window is measured in a process of its own, because the time since the start of the
    // process counts.
    const std::int64_t begin = std::chrono::steady_clock::now().time_since_epoch().count();
    if (QProcess::execute(QCoreApplication::applicationFilePath(),
                          {QString::fromStdString(data.native()), QString::number(begin)})
        != 0)
        return 1;
    RecorderProcess::prepare(folder.path());
    measureProcesses(folder.path());
}
