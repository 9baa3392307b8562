#include "app/ports/DesktopServices.h"

#include "platform/linux/PortalAppearance.h"
#include "platform/linux/StatusNotifierHost.h"
#include "platform/linux/UserService.h"
#include "platform/linux/X11Shortcut.h"
#include "tests/app/support/Await.h"
#include "tests/platform/DesktopPortal.h"
#include "tests/platform/DisplayServers.h"
#include "tests/platform/NotifierWatcher.h"
#include "tests/platform/PrivateBus.h"

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

/// The keys of the search panel, and what was reported of them.
struct Keys {
    X11Shortcut shortcut{
        {.pressed = [this] { ++presses; },
         .availabilityChanged = [this](const auto& now) { available = now.isAvailable; }},
        // A connection of its own, as another program has one.
        std::make_shared<GraphicalSessions>(GraphicalSessions::Addresses::ofEnvironment())};
    int presses = 0;
    std::optional<bool> available;
};

} // namespace

TEST(X11Shortcut, WorksWithNumLockAndCapsLock) {
    if (!test::hasPrograms({"Xvfb", "openbox", "xdotool"}))
        GTEST_SKIP() << "Xvfb, openbox and xdotool are needed";
    test::X11Server display;
    qputenv("DISPLAY", display.display().c_str());
    Keys keys;
    test::until([&] { return keys.available.has_value(); });
    ASSERT_TRUE(*keys.available);
    int expected = 0;
    for (const auto& lock : {u""_s, u"Num_Lock"_s, u"Caps_Lock"_s}) {
        if (!lock.isEmpty())
            display.run({u"xdotool"_s, u"key"_s, lock});
        display.run({u"xdotool"_s, u"key"_s, u"ctrl+shift+space"_s});
        ++expected;
        test::until([&] { return keys.presses == expected; });
    }
    // Other keys are none of its business.
    display.run({u"xdotool"_s, u"key"_s, u"ctrl+space"_s, u"shift+space"_s, u"ctrl+shift+a"_s});

    const Keys others;
    test::until([&] { return others.available.has_value(); });
    EXPECT_FALSE(*others.available);
    EXPECT_EQ(keys.presses, expected);
    display.stop();
    test::until([&] { return !*keys.available; });
}

TEST(DesktopServices, IgnoreADisplayOfAnotherMachine) {
    for (const auto& [display, isKept] : {std::pair(":7", true),
                                          {"unix:7.0", true},
                                          {"/tmp/socket:0", true},
                                          {"host:0", false},
                                          {"localhost:10.0", false},
                                          {"tcp/host:0", false}}) {
        qputenv("DISPLAY", display);
        desktopServices::ignoreRemoteDisplay();
        EXPECT_EQ(qEnvironmentVariableIsSet("DISPLAY"), isKept) << display;
    }
}

TEST(StatusNotifierHost, IsFollowedFromItsLateStartThroughARestart) {
    const test::PrivateBus bus;
    std::vector<bool> reports;
    const StatusNotifierHost host(bus.connect(u"program"_s),
                                  [&](bool isThere) { reports.push_back(isThere); });
    test::NotifierWatcher watcher(bus.connect(u"panel"_s));
    const auto after = [&](const std::vector<bool>& wanted) {
        test::until([&] { return reports.size() >= wanted.size(); });
        EXPECT_EQ(reports, wanted);
    };
    watcher.start();
    test::settle();
    EXPECT_TRUE(reports.empty());
    watcher.setHost(true);
    after({true});
    watcher.stop();
    after({true, false});
    watcher.start();
    after({true, false, true});
    watcher.setHost(false);
    after({true, false, true, false});
}

TEST(PortalAppearance, IsReadWheneverThePortalStarts) {
    const test::PrivateBus bus;
    test::DesktopPortal portal(bus.connect(u"portal"_s));
    SystemAppearance last;
    const PortalAppearance appearance(bus.connect(u"program"_s),
                                      [&](const SystemAppearance& read) { last = read; });
    const auto after = [&](const SystemAppearance& wanted) {
        test::until([&] { return last == wanted; });
    };
    portal.set(u"color-scheme"_s, 1);
    portal.start();
    after({.isDark = true});
    portal.set(u"contrast"_s, 1);
    after({.isDark = true, .hasHighContrast = true});
    portal.stop();
    portal.set(u"color-scheme"_s, 2);
    portal.start();
    after({.isDark = false, .hasHighContrast = true});
    portal.set(u"color-scheme"_s, 0);
    after({.hasHighContrast = true});
}

TEST(UserService, IsTheUnitAtTheEndOfTheCgroup) {
    const struct {
        const char* cgroups;
        std::optional<std::string> name;
    } cases[] = {
        {"0::/user.slice/user-1000.slice/user@1000.service/app.slice/tidemark.service\n",
         "tidemark.service"},
        {"12:pids:/a.service\n0::/b/app-x@autostart.service", "app-x@autostart.service"},
        {"0::/user.slice/session-2.scope\n", std::nullopt},
        {"0::/\n", std::nullopt},
        {"0::/a/--now.service\n", std::nullopt},
        {"0::/a/$(x).service\n", std::nullopt},
        {"1:name=systemd:/a.service\n", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [cgroups, name] : cases)
        EXPECT_EQ(userService::nameIn(cgroups), name) << cgroups;
}
