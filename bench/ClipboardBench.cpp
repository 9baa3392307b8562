// Copies on an X11 server without a screen, recorded as the recorder does it: what is lost, what it
// costs, and how long a program that does not answer delays anything.

#include "app/memory/ClipboardHistory.h"
#include "app/memory/MemoryHistoryService.h"
#include "app/preferences/JsonPreferences.h"
#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/memory/MarkedClipGuard.h"
#include "platform/linux/SessionClipboard.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>
#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <utility>

#include <unistd.h>

using namespace tidemark;
using namespace tidemark::bench;

namespace {

constexpr int copies = 10'000;
constexpr int pauseMilliseconds = 6;

/// Stands for another program that copies a text repeatedly, on a thread of its own. Counts the
/// copies that were read completely before the next one.
class Copier final : public DisplayReader, private X11Connection::Observer {
public:
    struct Progress {
        std::atomic<int> made = 0;
        /// The numbers of the copies that were read to their end.
        std::set<int> read;
    };

    Copier(X11Connection& connection, Progress& progress)
        : Observer(connection), progress(progress), window(connection.createWindow()),
          selection(connection.atom("CLIPBOARD")), targets(connection.atom("TARGETS")),
          text(connection.atom("UTF8_STRING")) {
        copy();
    }

    static std::string textOf(int number) {
        return "copy " + std::to_string(number) + std::string(1000, '.');
    }

private:
    void copy() {
        // The types are read before the text, and once more after it.
        const bool isRead =
            std::ranges::any_of(typesRead, [](const auto& reader) { return reader.second >= 2; });
        if (isRead)
            progress.read.insert(number);
        typesRead.clear();
        if (number == copies - 1)
            return progress.made.store(copies);
        progress.made.store(++number);
        xcb_set_selection_owner(connection.raw(), window, selection, XCB_CURRENT_TIME);
        const bool isLast = number == copies - 1;
        connection.after(std::chrono::milliseconds(isLast ? 1000 : pauseMilliseconds), &context,
                         [this] { copy(); });
    }

    void handle(const xcb_generic_event_t& event) override {
        if ((event.response_type & 0x7F) == XCB_SELECTION_REQUEST)
            answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    }
    void answer(const xcb_selection_request_event_t& request) {
        const auto put = [&](xcb_atom_t type, std::uint8_t format, std::size_t count,
                             const void* data) {
            xcb_change_property(connection.raw(), XCB_PROP_MODE_REPLACE, request.requestor,
                                request.property, type, format, static_cast<std::uint32_t>(count),
                                data);
        };
        if (request.target == targets) {
            put(XCB_ATOM_ATOM, 32, 1, &text);
            ++typesRead[request.requestor];
        } else {
            const auto bytes = textOf(number);
            put(text, 8, bytes.size(), bytes.data());
        }
        xcb_selection_notify_event_t done{};
        done.response_type = XCB_SELECTION_NOTIFY;
        done.time = request.time;
        done.requestor = request.requestor;
        done.selection = request.selection;
        done.target = request.target;
        done.property = request.property;
        std::array<char, 32> bytes{};
        std::memcpy(bytes.data(), &done, sizeof done);
        xcb_send_event(connection.raw(), 0, request.requestor, 0, bytes.data());
    }

    Progress& progress;
    const xcb_window_t window;
    const xcb_atom_t selection;
    const xcb_atom_t targets;
    const xcb_atom_t text;
    int number = -1;
    /// For each window that reads the present copy: how often it received the list of types. The
    /// watched program reads each copy by a new window.
    std::map<xcb_window_t, int> typesRead;
    const QObject context;
};

/// Passes everything on, and notes what is reported.
class CountingClipboard final : public Clipboard {
public:
    CountingClipboard(std::shared_ptr<GraphicalSessions> sessions, std::set<int>& reported)
        : clipboard(std::move(sessions)), reported(reported) {}

    void watch(std::string excluded, Copied copied, AccessChanged accessChanged) override {
        clipboard.watch(
            std::move(excluded),
            [this, copied = std::move(copied)](CopiedItem item) {
                const auto& text = item.contents.at(ClipPart::text).bytes;
                reported.insert(std::stoi(text.substr(text.find(' '))));
                copied(std::move(item));
            },
            std::move(accessChanged));
    }
    void unwatch() override { clipboard.unwatch(); }
    bool put(std::vector<ClipData> contents) override { return clipboard.put(std::move(contents)); }

private:
    SessionClipboard clipboard;
    std::set<int>& reported;
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
    std::set<int> recorded;
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

    double resident = 0;
    double longest = 0;
    QElapsedTimer sinceTurn;
    QTimer turn;
    turn.callOnTimeout(
        [&] { longest = std::max(longest, static_cast<double>(sinceTurn.restart())); });
    sinceTurn.start();
    turn.start(1);
    const auto others = std::make_shared<GraphicalSessions>(addresses);
    Copier::Progress progress;
    const double time = seconds([&] {
        const auto copier =
            others->x11()->add({[&](X11Connection& connection) {
                                    return std::make_unique<Copier>(connection, progress);
                                },
                                [] {}});
        until([&] { return progress.made > copies / 10; });
        resident = residentMegabytes();
        until([&] { return progress.made == copies; });
    });
    std::set<int> lost;
    std::ranges::set_difference(progress.read, recorded, std::inserter(lost, lost.end()));
    row("10,000 copies in", time, "s", 61);
    row("replaced before they were read to their end",
        static_cast<double>(copies) - static_cast<double>(progress.read.size()), "");
    row("read to their end, but not recorded", static_cast<double>(lost.size()), "", 0.5);
    row("memory after all of them, above that after a tenth", residentMegabytes() - resident, "MB",
        5);
    row("longest block of the event loop meanwhile", longest, "ms", 20);

    const SilentOwner silent(addresses.x11);
    longest = 0;
    handleEventsFor(1.5);
    row("longest block while a program does not answer", longest, "ms", 20);
    // The item of the program that did not answer may have been marked as secret. So nothing is
    // recorded for `keeperTime` after it, nor the first item after that if it is not known which
    // program offers it.
    handleEventsFor(MarkedClipGuard::keeperTime);
    SessionClipboard other(others);
    const auto copy = [&](int number) { other.put({{"UTF8_STRING", Copier::textOf(number)}}); };
    copy(copies);
    handleEventsFor(0.2);
    const double delay = seconds([&] {
        copy(copies + 1);
        until([&] { return recorded.contains(copies + 1); });
    });
    row("a copy after that, until it is recorded", delay * 1e3, "ms", 50);
    server.terminate();
    server.waitForFinished();
    return 0;
}
