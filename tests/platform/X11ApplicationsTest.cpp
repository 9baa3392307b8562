#include "platform/linux/X11Applications.h"

#include "app/base/MainThreadCalls.h"
#include "platform/linux/GraphicalSessions.h"
#include "tests/app/support/Await.h"
#include "tests/platform/DisplayServers.h"
#include "tests/platform/LaunchesByWindows.h"

#include <latch>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

/// Opens windows on a server and waits until its window manager lists them.
class WindowList {
public:
    explicit WindowList(const test::X11Server& server)
        : server(server), probe(X11Connection::open(server.display(), [] {})) {}

    std::unique_ptr<test::X11Window> windowOf(const char* name) const {
        return std::make_unique<test::X11Window>(server, std::vector<std::string>{"w", name});
    }
    void untilListed(std::size_t count) const {
        const auto list = probe->atom("_NET_CLIENT_LIST");
        while (probe->property(probe->root(), list).numbers().size() != count)
            QCoreApplication::processEvents();
    }

private:
    const test::X11Server& server;
    std::unique_ptr<X11Connection> probe;
};

} // namespace

TEST(X11ApplicationsTest, AnApplicationRunsWhileItHasANormalWindow) {
    if (!test::hasPrograms({"Xvfb", "openbox"}))
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    const test::X11Server server;
    GraphicalSessions sessions({.wayland = {}, .x11 = server.display()});
    const MainThreadCalls calls;
    std::string running = "?";
    const auto show = [&, post = calls.post()](const std::vector<ClipApplication>& now) {
        post([&, now] {
            running.clear();
            for (const auto& application : now)
                running += application.id + " ";
        });
    };
    const auto reader = sessions.x11()->add({[&](X11Connection& connection) {
                                                 return std::make_unique<X11Applications>(
                                                     connection, show, *sessions.x11Applications());
                                             },
                                             [] {}});
    const auto until = [&](const std::string& expected) {
        test::until([&] { return running == expected; });
    };
    until("");
    std::optional<test::X11Window> first;
    first.emplace(server, std::vector<std::string>{"editor", "Editor"});
    until("editor ");
    std::optional<test::X11Window> second;
    second.emplace(server, std::vector<std::string>{"editor", "Editor"},
                   "_NET_WM_WINDOW_TYPE_NORMAL");
    const test::X11Window dock(server, {"panel", "Panel"}, "_NET_WM_WINDOW_TYPE_DOCK");
    const test::X11Window other(server, {"viewer", "Viewer"});
    until("editor viewer ");
    first.reset();
    second.reset();
    until("viewer ");
}

TEST(WindowApplicationsTest, ReportLaunchesAndQuitsByWindows) {
    if (!test::hasPrograms({"Xvfb", "openbox"}))
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    const test::TemporaryFolder entries;
    test::writeEntries(entries, {"Editor", "Player"});
    const test::X11Server server;
    const WindowList windows(server);
    const auto windowOf = [&](const char* name) { return windows.windowOf(name); };
    const auto untilListed = [&](std::size_t count) { windows.untilListed(count); };
    auto editor = windowOf("Editor");
    untilListed(1);

    const auto sessions = std::make_shared<GraphicalSessions>(
        GraphicalSessions::Addresses{.wayland = {}, .x11 = server.display()},
        std::vector{entries.path()});
    test::LaunchesByWindows launches(WindowApplications::Server::x11, sessions, entries);
    auto player = windowOf("Player");
    const auto unknown = windowOf("Unknown");
    launches.expect("+Player ");
    auto second = windowOf("Player");
    untilListed(4);
    player.reset();
    editor.reset();
    launches.expect("-Editor ");
    second.reset();
    launches.expect("-Player ");

    player = windowOf("Player");
    launches.expect("+Player ");
    // The clock stands still while one window takes the place of another.
    player.reset();
    untilListed(1);
    test::settleReaders(*sessions);
    player = windowOf("Player");
    untilListed(2);
    test::settleReaders(*sessions);
    editor = windowOf("Editor");
    launches.expect("+Editor ");
    // The wait for another window begins anew when the application has had one meanwhile.
    player.reset();
    untilListed(2);
    test::settleReaders(*sessions);
    player = windowOf("Player");
    untilListed(3);
    test::settleReaders(*sessions);
    launches.clock.advance(1);
    player.reset();
    untilListed(2);
    test::settleReaders(*sessions);
    launches.clock.advance(1.5);
    EXPECT_EQ(launches.reported, "");
    launches.expect("-Player ");
    launches.launches.stop();
    launches.clock.advance(10);
    EXPECT_EQ(launches.reported, "");
}

TEST(WindowApplicationsTest, ReportTheQuitOfAnApplicationThatIsStillBeingIdentified) {
    if (!test::hasPrograms({"Xvfb", "openbox"}))
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    const test::TemporaryFolder entries;
    test::writeEntries(entries, {"Editor"});
    const test::X11Server server;
    const WindowList windows(server);
    auto editor = windows.windowOf("Editor");
    windows.untilListed(1);
    const auto sessions = std::make_shared<GraphicalSessions>(
        GraphicalSessions::Addresses{.wayland = {}, .x11 = server.display()},
        std::vector{entries.path()});
    std::latch quit(1);
    test::LaunchesByWindows launches(WindowApplications::Server::x11, sessions, entries,
                                     [&] { quit.wait(); });
    editor.reset();
    windows.untilListed(0);
    test::settleReaders(*sessions);
    quit.count_down();
    launches.expect("-Editor ");
}
