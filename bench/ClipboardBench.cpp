// Copies on an X11 server without a screen, recorded as the recorder does it: what is lost, what it
// costs, and how long a program that does not answer delays anything.

#include "app/memory/ClipboardHistory.h"
#include "app/memory/MemoryHistoryService.h"
#include "app/preferences/JsonPreferences.h"
#include "bench/Report.h"
#include "bench/Workspace.h"
#include "platform/linux/SessionClipboard.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>
#include <algorithm>
#include <fstream>
#include <utility>

#include <unistd.h>

using namespace tidemark;
using namespace tidemark::bench;

namespace {

constexpr int copies = 10'000;
constexpr int pauseMilliseconds = 6;

/// Passes everything on, and counts what is reported.
class CountingClipboard final : public Clipboard {
public:
    CountingClipboard(std::shared_ptr<GraphicalSessions> sessions, int& count)
        : clipboard(std::move(sessions)), count(count) {}

    void watch(std::string excluded, Copied copied, AccessChanged accessChanged) override {
        clipboard.watch(
            std::move(excluded),
            [this, copied = std::move(copied)](CopiedItem item) {
                ++count;
                copied(std::move(item));
            },
            std::move(accessChanged));
    }
    void unwatch() override { clipboard.unwatch(); }
    void put(std::vector<ClipData> contents) override { clipboard.put(std::move(contents)); }

private:
    SessionClipboard clipboard;
    int& count;
};

double residentMegabytes() {
    std::ifstream file("/proc/self/statm");
    double pages = 0;
    double resident = 0;
    file >> pages >> resident;
    return resident * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

void handleEventsFor(double seconds) {
    QElapsedTimer time;
    time.start();
    while (static_cast<double>(time.elapsed()) < seconds * 1000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

template <class Condition>
void until(const Condition& condition) {
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

/// Takes the selection and answers nobody.
class SilentOwner {
public:
    explicit SilentOwner(const std::string& display)
        : connection(X11Connection::open(display, [] {})) {
        const auto window = connection->createWindow();
        xcb_set_selection_owner(connection->raw(), window, connection->atom("CLIPBOARD"),
                                XCB_CURRENT_TIME);
        xcb_flush(connection->raw());
    }

private:
    std::unique_ptr<X11Connection> connection;
};

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QProcess server;
    server.start("Xvfb", {"-displayfd", "1", "-nolisten", "tcp"});
    while (!server.canReadLine())
        if (!server.waitForReadyRead()) {
            std::puts("Xvfb is not installed: not measured");
            return 0;
        }
    const GraphicalSessions::Addresses addresses{
        .wayland = {}, .x11 = ":" + server.readLine().trimmed().toStdString()};

    const Workspace workspace;
    JsonPreferences preferences(workspace.path() / "settings.json",
                                JsonPreferences::Opening::toWrite);
    preferences.set("memoryClipboard", true);
    NotificationCenter center;
    int recorded = 0;
    ClipboardHistory history(preferences,
                             std::make_unique<CountingClipboard>(
                                 std::make_shared<GraphicalSessions>(addresses), recorded));
    MemoryHistoryService service({.url = workspace.path() / "memory-history.json",
                                  .preferences = preferences,
                                  .workspaceCenter = center,
                                  .collectors = {&history}});
    const auto loading = service.load();
    until([&] { return service.isLoaded(); });
    service.start();
    until([&] { return history.status() == "Recording copied items"; });

    SessionClipboard other(std::make_shared<GraphicalSessions>(addresses));
    const auto copy = [&](int number) {
        other.put({{"UTF8_STRING", "copy " + std::to_string(number) + std::string(1000, '.')}});
    };
    copy(-1);
    until([&] { return recorded == 1; });

    double resident = 0;
    double longest = 0;
    QElapsedTimer sinceTurn;
    QTimer turn;
    turn.callOnTimeout(
        [&] { longest = std::max(longest, static_cast<double>(sinceTurn.restart())); });
    sinceTurn.start();
    turn.start(1);
    int made = 0;
    QTimer copier;
    copier.callOnTimeout([&] {
        copy(made++);
        if (made == copies / 10)
            resident = residentMegabytes();
        if (made == copies)
            copier.stop();
    });
    recorded = 0;
    const double time = seconds([&] {
        copier.start(pauseMilliseconds);
        until([&] { return made == copies; });
    });
    handleEventsFor(1);
    row("10,000 copies in", time, "s");
    row("not recorded of them", copies - recorded, "", 0.5);
    row("memory after all of them, above that after a tenth", residentMegabytes() - resident, "MB",
        5);
    row("longest block of the event loop meanwhile", longest, "ms", 20);

    const SilentOwner silent(addresses.x11);
    longest = 0;
    handleEventsFor(1.5);
    row("longest block while a program does not answer", longest, "ms", 20);
    const int before = recorded;
    const double delay = seconds([&] {
        copy(made);
        until([&] { return recorded > before; });
    });
    row("next copy, until it is recorded", delay * 1e3, "ms", 50);
    server.terminate();
    server.waitForFinished();
    return 0;
}
