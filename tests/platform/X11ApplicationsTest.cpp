#include "platform/linux/X11Applications.h"

#include "app/base/MainThreadCalls.h"
#include "platform/linux/GraphicalSessions.h"
#include "tests/app/support/Await.h"
#include "tests/platform/DisplayServers.h"

#include <gtest/gtest.h>

using namespace tidemark;

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
