#include "core/base/Error.h"
#include "platform/linux/SystemdService.h"
#include "tests/app/support/Await.h"
#include "tests/platform/UserManager.h"
#include "tests/support/TemporaryFolder.h"

#include <QTimer>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

using namespace tidemark;
using Activity = RecorderService::Activity;

namespace {

/// The service as it is installed, with the built program, under a real service manager.
struct ServiceOfSession : testing::Test {
    void SetUp() override {
        if (const auto absence = test::UserManager::absence())
            GTEST_SKIP() << *absence;
        manager.emplace();
        for (const char* unit : {"tidemark.service", "tidemark-display.service"})
            install(unit);
        manager->connect();
    }

    /// Installs a unit, after changing the path of the program and one setting for builds with
    /// sanitizers.
    void install(const std::string& name) const {
        std::string unit = test::contents(std::filesystem::path(TIDEMARK_UNITS) / name);
        if (const auto start = unit.find("ExecStart=\""); start != unit.npos)
            unit.replace(start, unit.find('"', start + 11) + 1 - start,
                         "ExecStart=\"" TIDEMARK_PROGRAM "\"");
        // The search for leaks in a build with sanitizers needs more than the service may do.
        unit += "\n[Service]\nEnvironment=ASAN_OPTIONS=detect_leaks=0\n";
        manager->home().write(".config/systemd/user/" + name, unit);
    }

    /// What a shell command prints in the session, on either stream.
    std::string printed(const std::string& command) {
        const auto output = manager->home() / "output";
        std::filesystem::remove(output);
        // In a subshell, since a failure would end the shell that carries out the commands.
        manager->run(("{ ( tidemark=" TIDEMARK_PROGRAM "; " + command + " ) >'" + output.native()
                      + ".part' 2>&1; mv '" + output.native() + ".part' '" + output.native()
                      + "'; }")
                         .c_str());
        QTimer look;
        look.start(5);
        test::until([&] { return std::filesystem::exists(output); });
        return test::contents(output);
    }
    std::string tidemark(const std::string& words) { return printed("$tidemark " + words); }

    std::optional<test::UserManager> manager;
};

} // namespace

TEST_F(ServiceOfSession, RunsRestrictedFromEnableToDisable) {
    EXPECT_EQ(tidemark("service status"),
              "The service is off; tidemark service enable turns it on.\n");
    EXPECT_EQ(tidemark("service enable"),
              "The service is running, and starts with your session.\n");
    EXPECT_EQ(tidemark("service status --json"),
              "{\"startsWithSession\":true,\"activity\":\"running\"}\n");

    const std::string state = printed("cat /proc/$(systemctl --user show --value "
                                      "--property=MainPID tidemark.service)/status");
    for (const char* line : {"NoNewPrivs:\t1", "Seccomp:\t2"})
        EXPECT_NE(state.find(line), state.npos) << state;

    const std::string waiting =
        printed("systemctl --user stop tidemark.service; $tidemark run --setup none 2>/dev/null & "
                "until $tidemark status --json | grep -q '\"running\":true'; do :; done; "
                "systemctl --user start tidemark.service; "
                "$tidemark service status; $tidemark service status --json; kill $!; wait");
    EXPECT_EQ(waiting, "The service waits until another program, which records now, ends; it "
                       "starts with your session.\n"
                       "{\"startsWithSession\":true,\"activity\":\"waiting\"}\n");

    EXPECT_EQ(tidemark("service disable"),
              "The service has ended and does not start with your next session. The history "
              "stays.\n");
    EXPECT_EQ(tidemark("service status"),
              "The service is off; tidemark service enable turns it on.\n");

    tidemark("service enable");
    EXPECT_EQ(tidemark("erase --yes"), "Removed all that Tidemark kept for you.\n");
    EXPECT_EQ(tidemark("service status"),
              "The service is off; tidemark service enable turns it on.\n");
    EXPECT_FALSE(std::filesystem::exists(manager->home() / ".local/share/Tidemark"));
}

TEST(SystemdServiceTest, ReadsTheStateOfItsUnit) {
    const auto state = [](const char* enabled, const char* active) {
        const auto status =
            SystemdService::parse(std::string("MainPID=42\nLoadState=loaded\nUnitFileState=")
                                  + enabled + "\nActiveState=" + active + "\n");
        EXPECT_EQ(status.process, 42);
        return std::pair(status.startsWithSession, status.activity);
    };
    EXPECT_EQ(state("enabled", "active"), std::pair(true, Activity::running));
    EXPECT_EQ(state("enabled-runtime", "inactive"), std::pair(true, Activity::stopped));
    EXPECT_EQ(state("disabled", "failed"), std::pair(false, Activity::failed));
    EXPECT_EQ(state("disabled", "activating"), std::pair(false, Activity::starting));
    EXPECT_THROW(SystemdService::parse("LoadState=not-found\nActiveState=inactive\n"), Error);
}

TEST(SystemdServiceTest, SaysWhereThereIsNone) {
    if (std::filesystem::exists("/run/systemd/system"))
        GTEST_SKIP() << "systemd has started this machine";
    try {
        SystemdService().enable();
        FAIL() << "it was enabled";
    } catch (const Error& error) {
        EXPECT_STREQ(error.what(),
                     "This system was not started by systemd, so there is no service; "
                     "tidemark run records without one.");
    }
}
