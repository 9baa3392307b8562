#pragma once

#include "platform/linux/WindowApplications.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/support/TemporaryFolder.h"

#include <QTimer>
#include <functional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace tidemark::test {

/// Writes desktop entries of applications with these names.
inline void writeEntries(const TemporaryFolder& folder, std::initializer_list<const char*> names) {
    for (const char* name : names)
        folder.write(std::string(name) + ".desktop",
                     std::string("[Desktop Entry]\nType=Application\nExec=/bin/sleep\nName=") + name
                         + "\n");
}

/// Launches and quits that are noticed by windows. The clock advances only while `expect` waits.
/// `beforeReading` is called on another thread before the entries are read.
struct LaunchesByWindows {
    LaunchesByWindows(
        WindowApplications::Server server, std::shared_ptr<GraphicalSessions> sessions,
        const TemporaryFolder& entries, const std::function<void()>& beforeReading = [] {})
        : windows(*new WindowApplications({.server = server,
                                           .sessions = std::move(sessions),
                                           .clock = clock,
                                           .folders =
                                               [path = entries.path(), beforeReading] {
                                                   beforeReading();
                                                   return std::vector{path};
                                               }})),
          launches(sourceOf(windows), clock) {
        launches.start([this](const ApplicationSource::Change& change) {
            const bool isLaunch = change.kind == ApplicationSource::Change::Kind::launched;
            reported += (isLaunch ? "+" : "-") + change.application.id + " ";
        });
        until([this] { return windows.isFollowing(); });
    }

    /// Waits for reports and expects that they were these since the last call, such as
    /// "+Editor -Player ".
    void expect(const std::string& expected) {
        QTimer time;
        time.callOnTimeout([this] { clock.advance(1); });
        time.start(5);
        until([&] { return reported.size() >= expected.size(); });
        EXPECT_EQ(std::exchange(reported, {}), expected);
    }

    ManualAppClock clock;
    std::string reported;
    /// Belongs to `launches`.
    WindowApplications& windows;
    ApplicationLaunches launches;

private:
    static std::vector<std::unique_ptr<ApplicationLaunches::Source>>
    sourceOf(WindowApplications& only) {
        std::vector<std::unique_ptr<ApplicationLaunches::Source>> sources;
        sources.emplace_back(&only);
        return sources;
    }
};

} // namespace tidemark::test
