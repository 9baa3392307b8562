#include "core/history/InstallationHistory.h"

#include "core/base/Digest.h"
#include "core/history/ReportProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <cerrno>
#include <csignal>

#include <gtest/gtest.h>
#include <sys/wait.h>

using namespace tidemark;
using InstallationHistory::ImportError;
using InstallationHistory::ReportTool;

namespace {

constexpr Date since{0};
constexpr Date reportedThrough{604'800};

InstallationPreview parsed(const std::string& entries) {
    return InstallationHistory::parse("{\"SPInstallHistoryDataType\":[" + entries + "]}", since,
                                      reportedThrough);
}

std::string entry(const std::string& name, const std::string& date, const std::string& more = "") {
    return R"({"_name":")" + name + R"(","install_date":")" + date + "\"" + more + "}";
}

/// The kind of the `ImportError` that `attempt` throws, the sentence of any other error, or
/// "nothing".
std::string importFailureOf(const auto& attempt) {
    try {
        attempt();
        return "nothing";
    } catch (const ImportError& error) {
        constexpr const char* kinds[] = {"reportFailed", "invalidReport", "tooLarge"};
        return kinds[static_cast<std::size_t>(error.kind())];
    } catch (const Error& error) {
        return error.what();
    }
}

/// A shell script as the report tool.
class Tool {
public:
    explicit Tool(const std::string& script) {
        tool.path = folder.write("tool", "#!/bin/sh\n" + script + "\n");
        for (const auto& path : {tool.path, folder.path()})
            std::filesystem::permissions(path, std::filesystem::perms(0755));
        tool.terminationGrace = 0.05;
    }
    InstallationPreview collect(double timeLimit = 30) {
        tool.timeLimit = timeLimit;
        return InstallationHistory::collect(reportedThrough, tool);
    }
    std::string failure(double timeLimit = 30) {
        return importFailureOf([&] { collect(timeLimit); });
    }

private:
    test::TemporaryFolder folder;
    ReportTool tool;
};

bool noChildIsLeft() {
    return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD;
}

} // namespace

TEST(InstallationHistory, ReadsEntriesAndCountsTheRest) {
    const std::tuple<std::string, std::size_t, std::size_t, std::size_t> cases[] = {
        {"", 0, 0, 0},
        {entry("A", "2001-01-02T00:00:00Z"), 1, 0, 0},
        {entry("A", "2001-01-02T00:00:00.5Z"), 1, 0, 0},
        {entry("A", "2001-01-01T00:00:00Z") + "," + entry("B", "2001-01-08T00:00:00Z"), 2, 0, 0},
        {entry("A", "2000-12-31T23:59:59Z") + "," + entry("B", "2001-01-08T00:00:01Z"), 0, 0, 2},
        {entry("A", "2001-01-02T00:00:00Z") + "," + entry(" A\\n", "2001-01-02T00:00:00Z"), 1, 0,
         0},
        {entry("A", "2024-13-45") + "," + entry(" \\u00a0", "2001-01-02T00:00:00Z"), 0, 2, 0},
        {R"(1,"x",[],null,{},{"_name":"A"},{"_name":7,"install_date":"2001-01-02T00:00:00Z"},)"
         R"({"_name":"A","install_date":1})",
         0, 8, 0},
    };
    for (const auto& [entries, records, skipped, outside] : cases) {
        const auto preview = parsed(entries);
        EXPECT_EQ(preview.records.size(), records) << entries;
        EXPECT_EQ(preview.skippedRecords, skipped) << entries;
        EXPECT_EQ(preview.outsideWindowRecords, outside) << entries;
    }
    const auto preview =
        parsed(entry("Old", "2001-01-02T00:00:00Z") + ","
               + entry("New", "2001-01-03T00:00:00Z",
                       R"(,"install_version":" 2.0 ","package_source":" package_source_apple")"));
    EXPECT_EQ(preview.records.at(0),
              (InstallationRecord{"New", "2.0", Date{172'800}, " package_source_apple",
                                  reportedThrough}));
    EXPECT_EQ(preview.records.at(1),
              (InstallationRecord{"Old", "", Date{86'400}, "", reportedThrough}));
    EXPECT_EQ(preview.since, since);
    EXPECT_EQ(preview.through, reportedThrough);
}

TEST(InstallationHistory, RefusesAReportInAnotherForm) {
    std::string nested;
    for (int i = 0; i < 100'000; ++i)
        nested += "[";
    for (const std::string& report : {std::string(), std::string("[]"), std::string("{}"), nested,
                                      std::string(R"({"SPInstallHistoryDataType":{}})"),
                                      std::string(R"({"SPInstallHistoryDataType":[)")})
        EXPECT_EQ(
            importFailureOf([&] { InstallationHistory::parse(report, since, reportedThrough); }),
            "invalidReport");
}

TEST(InstallationHistory, MakesAnEventOfARecord) {
    InstallationRecord record{"XProtectPayloads", "", Date{0.5}, "package_source_other", {}};
    Event event = InstallationHistory::event(record);
    EXPECT_EQ(event.id, "installation-"
                            + Sha256::hex(R"(["XProtectPayloads","","978307200.5",)"
                                          R"("package_source_other"])"));
    EXPECT_EQ(event.title + "|" + event.subtitle + "|" + event.symbol,
              "XProtectPayloads Installation Recorded|Version not recorded|clock.badge.checkmark");
    EXPECT_EQ(event.importance, Importance::routine);
    EXPECT_EQ(event.category, EventCategory::applications);
    EXPECT_EQ(event.timestamp, record.recordedAt);
    EXPECT_EQ(event.intervalStart, record.recordedAt);
    EXPECT_EQ(*event.installationRecord, record);
    EXPECT_EQ(record.sourceDescription(), "Other installer");

    record.name = "My XProtect";
    record.version = "3";
    record.packageSource = "package_source_apple";
    event = InstallationHistory::event(record);
    EXPECT_EQ(event.subtitle, "Version 3");
    EXPECT_EQ(event.importance, Importance::prominent);
    EXPECT_EQ(record.sourceDescription(), "Apple");
    record.packageSource = "package_source_automatic";
    EXPECT_EQ(InstallationHistory::event(record).importance, Importance::routine);
    EXPECT_EQ(record.sourceDescription(), "Installed automatically");
    record.packageSource = "";
    EXPECT_EQ(record.sourceDescription(), "Not recorded");
}

TEST(InstallationHistory, CollectsFromTheTool) {
    Tool tool(R"(echo noise >&2
printf '{"SPInstallHistoryDataType":[{"_name":"%s","install_date":"2001-01-01T00:00:00Z"}]}' "$*")");
    const auto preview = tool.collect();
    EXPECT_EQ(preview.records.at(0).name, "SPInstallHistoryDataType -json -timeout 20");
    EXPECT_EQ(preview.since, since);
    EXPECT_TRUE(noChildIsLeft());
}

TEST(InstallationHistory, EndsTheTool) {
    const std::tuple<const char*, double, const char*> cases[] = {
        {"echo '{}'; exit 3", 30, "reportFailed"},
        {"echo '{}'", 30, "invalidReport"},
        {"kill -KILL $$", 30, "reportFailed"},
        {"exec cat /dev/zero", 30, "tooLarge"},
        {"exec sleep 1000", 0.05, "reportFailed"},
        {"exec >&-; exec sleep 1000", 0.05, "reportFailed"},
        {"trap '' TERM; while :; do :; done", 0.05, "reportFailed"},
        // Another process may still write more of the report.
        {"echo '{\"SPInstallHistoryDataType\":[]}'; sleep 1 & exit 0", 0.05, "reportFailed"},
        {"trap '' TERM; exec cat /dev/zero", 30, "tooLarge"},
    };
    for (const auto& [script, timeLimit, failure] : cases) {
        EXPECT_EQ(Tool(script).failure(timeLimit), failure) << script;
        EXPECT_TRUE(noChildIsLeft()) << script;
    }
    const auto missing = [] {
        InstallationHistory::collect(reportedThrough, ReportTool{.path = "/no/such/tool"});
    };
    EXPECT_EQ(importFailureOf(missing),
              "/no/such/tool could not be started: No such file or directory.");
}

TEST(InstallationHistory, LimitsTheReportTo16MiB) {
    const std::string fill = "head -c $((16777216 - 33 + EXTRA)) /dev/zero | tr '\\0' ' '";
    const std::string report = "echo '{\"SPInstallHistoryDataType\":[' ; " + fill + "; echo ']}'";
    EXPECT_EQ(Tool("EXTRA=0\n" + report).failure(), "nothing");
    EXPECT_EQ(Tool("EXTRA=1\n" + report).failure(), "tooLarge");
}

// When SIGCHLD is ignored, the child can't be waited for. Terminating it must not signal every
// process.
TEST(InstallationHistory, WorksWhenTheProcessIgnoresSIGCHLD) {
    Tool tool("exit 0");
    if (::geteuid() != 0)
        GTEST_SKIP() << "a failure would end every process of this user";
    const pid_t child = ::fork();
    if (child == 0) {
        ::signal(SIGCHLD, SIG_IGN);
        if (::setuid(65'533) != 0)
            ::_exit(2);
        const pid_t bystander = ::fork();
        if (bystander == 0) {
            // Ends by itself if the test fails to kill it.
            ::alarm(60);
            while (true)
                ::pause();
        }
        const bool failed = tool.failure() == "reportFailed";
        const bool spared = ::kill(bystander, 0) == 0;
        ::kill(bystander, SIGKILL);
        ::_exit(failed && spared ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST(ReportProcess, UnblocksAndResetsSignals) {
    sigset_t terminate;
    ::sigemptyset(&terminate);
    ::sigaddset(&terminate, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &terminate, nullptr);
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    // No signal is blocked, and SIGPIPE is not ignored.
    const char* expected = "^(SigBlk:.0+|SigIgn:.*[02468ace]...)$";
    ReportProcess child("/bin/grep", {"-c", "-E", expected, "/proc/self/status"}, 60, 1);
    EXPECT_EQ(child.readOutput(1000), "2\n");
    std::signal(SIGPIPE, before);
    ::pthread_sigmask(SIG_UNBLOCK, &terminate, nullptr);
}
