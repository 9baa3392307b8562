#include "core/history/InstallationHistory.h"
#include "core/history/ReportProcess.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ProcessZone.h"
#include "tests/support/TemporaryFolder.h"

#include <cmath>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tidemark;
using InstallationHistory::ImportError;
using InstallationHistory::PackageLog;

namespace {

/// 2024-05-08 00:00 UTC, the end of the week that is read.
constexpr Date through = Date::fromUnix(1'715'126'400);

struct PackageLogTest : testing::Test {
    InstallationPreview collect() { return InstallationHistory::collect(through, log); }
    std::string failure() {
        try {
            collect();
        } catch (const ImportError& error) {
            return error.kind() == ImportError::Kind::tooLarge ? "tooLarge" : "reportFailed";
        }
        return "nothing";
    }
    /// The records as "name version day-in-May", newest first, then the numbers of skipped entries
    /// and of entries outside the week.
    std::string summary() {
        const auto preview = collect();
        std::string text;
        for (const auto& record : preview.records)
            text += record.name + " " + record.version + " "
                    + std::to_string(8 - std::lround((through - record.recordedAt) / 86'400))
                    + ", ";
        return text + std::to_string(preview.skippedRecords) + "/"
               + std::to_string(preview.outsideWindowRecords);
    }
    void pack(const std::string& name, const std::string& bytes) {
        const auto path = folder.write(name, bytes);
        ReportProcess gzip("/usr/bin/env", {"gzip", "-f", path.native()}, 60, 1);
        ASSERT_TRUE(gzip.succeeded());
    }

    const test::ProcessZone utc{"UTC"};
    const test::TemporaryFolder folder;
    PackageLog log{.path = folder / "dpkg.log",
                   .transactions = folder / "history.log",
                   .states = folder / "extended_states"};
};

/// The log of the installation of a package on a day in May.
std::string installation(const std::string& package, const std::string& version, int day) {
    const std::string stamp = "2024-05-0" + std::to_string(day) + " 00:00:00 ";
    return stamp + "install " + package + " <none> " + version + "\n" + stamp
           + "status half-installed " + package + " " + version + "\n" + stamp + "configure "
           + package + " " + version + " <none>\n" + stamp + "status installed " + package + " "
           + version + "\n";
}

} // namespace

TEST_F(PackageLogTest, ReportsCompletedInstallationsAndUpgrades) {
    folder.write("dpkg.log", R"(2024-05-02 09:00:00 startup archives unpack
2024-05-02 09:00:00 install tide-gauge:amd64 <none> 1:2.0~rc1-3+b1
2024-05-02 09:00:00 status half-installed tide-gauge:amd64 1:2.0~rc1-3+b1
2024-05-02 09:00:01 status triggers-pending man-db:amd64 2.11.2-2
2024-05-02 09:00:01 status unpacked tide-gauge:amd64 1:2.0~rc1-3+b1
2024-05-02 09:00:02 upgrade harbour 4.1 4.2
2024-05-02 09:00:02 upgrade lighthouse:all 7 8
2024-05-02 09:00:02 install keel:amd64 <none> 1
2024-05-02 09:00:02 upgrade rudder:amd64 1 1
2024-05-02 09:00:03 startup packages configure
2024-05-02 09:00:03 configure tide-gauge:amd64 1:2.0~rc1-3+b1 <none>
2024-05-02 09:00:03 conffile /etc/tide gauge.conf install
2024-05-02 09:00:04 status triggers-awaited tide-gauge:amd64 1:2.0~rc1-3+b1
2024-05-02 09:00:05 status installed harbour 4.2
2024-05-02 09:00:06 status installed lighthouse:all 7
2024-05-02 09:00:06 status installed rudder:amd64 1
2024-05-02 09:00:07 status installed tide-gauge:amd64 1:2.0~rc1-3+b1
2024-05-02 09:00:08 trigproc man-db:amd64 2.11.2-2 <none>
2024-05-02 09:00:08 status installed man-db:amd64 2.11.2-2
2024-05-02 09:00:09 status installed tide-gauge:amd64 1:2.0~rc1-3+b1
2024-05-02 09:00:09 remove harbour 4.2 <none>
2024-05-02 09:00:09 status not-installed harbour <none>
)");
    const auto preview = collect();
    std::string found;
    for (const auto& record : preview.records)
        found += record.name + " " + record.version + ", ";
    EXPECT_EQ(found, "harbour 4.2, rudder 1, tide-gauge 1:2.0~rc1-3+b1, ");
    EXPECT_EQ(preview.skippedRecords, 0U);
    // The date is the start of this run of dpkg.
    EXPECT_EQ(preview.records.at(2),
              (InstallationRecord{"tide-gauge", "1:2.0~rc1-3+b1", Date::fromUnix(1'714'640'403),
                                  "package_source_other", through}));
}

TEST_F(PackageLogTest, ReadsLocalTimes) {
    const std::tuple<const char*, const char*, double> cases[] = {
        {"UTC", "2024-05-02 09:00:00", 1'714'640'400},
        {"Europe/Berlin", "2024-05-02 11:00:00", 1'714'640'400},
        {"America/St_Johns", "2024-05-02 06:30:00", 1'714'640'400},
        {"Asia/Kathmandu", "2024-05-02 14:45:00", 1'714'640'400},
        // The first and the last second of the week.
        {"Europe/Berlin", "2024-05-01 02:00:00", 1'714'521'600},
        {"Europe/Berlin", "2024-05-08 02:00:00", 1'715'126'400},
    };
    for (const auto& [zone, time, unix] : cases) {
        const test::ProcessZone local(zone);
        folder.write("dpkg.log", std::string(time) + " install a:all <none> 1\n" + time
                                     + " status installed a:all 1\n");
        const auto preview = collect();
        ASSERT_EQ(preview.records.size(), 1U) << zone << " " << time;
        EXPECT_EQ(preview.records[0].recordedAt, Date::fromUnix(unix)) << zone << " " << time;
    }
    const test::ProcessZone local("Europe/Berlin");
    folder.write("dpkg.log", "2024-05-01 01:59:59 install a 0 1\n"
                             "2024-05-01 01:59:59 status installed a 1\n"
                             "2024-05-08 02:00:01 install a 1 2\n"
                             "2024-05-08 02:00:01 status installed a 2\n");
    EXPECT_EQ(summary(), "0/2");
}

TEST_F(PackageLogTest, GroupsTransactionsAndMarksAutomaticPackages) {
    folder.write("dpkg.log", R"(2024-05-02 08:59:00 startup archives install
2024-05-02 08:59:01 install own:amd64 <none> 1
2024-05-02 08:59:03 status installed own:amd64 1
2024-05-02 09:00:01 startup archives unpack
2024-05-02 09:00:02 install tide-gauge:amd64 <none> 2.0
2024-05-02 09:00:02 install libtide2:all <none> 2.0
2024-05-02 09:00:02 install keel:i386 <none> 1
2024-05-02 09:00:02 install keel:amd64 <none> 1
2024-05-02 09:00:03 upgrade harbour:amd64 4.1 4.2
2024-05-02 09:00:04 startup packages configure
2024-05-02 09:00:05 status installed libtide2:all 2.0
2024-05-02 09:00:05 status installed keel:i386 1
2024-05-02 09:00:05 status installed keel:amd64 1
2024-05-02 09:00:06 status installed harbour:amd64 4.2
2024-05-02 09:00:07 status installed tide-gauge:amd64 2.0
2024-05-02 09:10:00 startup archives install
2024-05-02 09:10:01 upgrade libtide2:all 2.0 2.0
2024-05-02 09:10:02 status installed libtide2:all 2.0
)");
    const std::string transaction = R"(
Start-Date: 2024-05-02  09:00:00
Commandline: apt install tide-gauge
Install: tide-gauge:amd64 (2.0), libtide2:amd64 (2.0, automatic), keel:amd64 (1), keel:i386 (1, automatic)
Upgrade: harbour:amd64 (4.1, 4.2)
End-Date: 2024-05-02  09:00:07
)";
    const auto without = [&](const std::string& part) {
        std::string text = transaction;
        return text.erase(text.find(part), part.size());
    };
    /// The records with the seconds after 09:00 of each; "*" for routine ones.
    const auto found = [&] {
        std::string text;
        for (const auto& record : collect().records)
            text +=
                record.name + (record.isRoutine() ? "*" : "") + " "
                + std::to_string(std::lround(record.recordedAt.secondsSince1970()) - 1'714'640'400)
                + ", ";
        return text;
    };
    const std::string together =
        "libtide2 600, libtide2* 0, keel 0, harbour 0, tide-gauge 0, own -60, ";
    const std::string alone =
        "libtide2 600, libtide2 4, keel 4, harbour 4, tide-gauge 4, own -60, ";
    EXPECT_EQ(found(), alone) << "without a log of apt";
    const std::pair<std::string, std::string> cases[] = {
        {transaction, together},
        {"\xFF\n\nInstall: own:amd64 (1, automatic)\n" + transaction
             + "Start-Date: x\nEnd-Date: \n",
         together},
        {without("End-Date: 2024-05-02  09:00:07\n"),
         "libtide2* 0, keel 0, harbour 0, tide-gauge 0, own -60, "},
        {without("02  09:00:00"), alone},
        {without("Install: "),
         "libtide2 600, libtide2 4, keel 4, tide-gauge 4, harbour 0, own -60, "},
        {without("), keel:amd64 ("),
         "libtide2 600, libtide2 4, keel* 0, harbour 0, tide-gauge 0, own -60, "},
        {transaction + "Start-Date: 2024-05-01  09:00:00\nEnd-Date: 2024-05-01  09:00:01\n",
         together},
        {std::string(1'000'000, '(') + transaction, together},
    };
    for (const auto& [text, expected] : cases) {
        folder.write("history.log", text);
        EXPECT_EQ(found(), expected) << text.substr(0, 400);
    }
    // The log of apt does not say why an upgraded package is installed.
    const auto state = [](const std::string& package, const char* isAutomatic) {
        return "Package: " + package + "\nArchitecture: amd64\nAuto-Installed: " + isAutomatic
               + "\n\n";
    };
    const std::pair<std::string, std::string> states[] = {
        {state("buoy", "1") + state("harbour", "1") + state("tide-gauge", "1"),
         "libtide2 600, libtide2* 0, keel 0, harbour* 0, tide-gauge 0, own -60, "},
        {state("harbour", "0"), together},
        {"Package: harbour\nArchitecture: i386\nAuto-Installed: 1\n", together},
        {"Auto-Installed: 1\n\n\xFF\nPackage: \n", together},
    };
    folder.write("history.log", transaction);
    for (const auto& [text, expected] : states) {
        folder.write("extended_states", text);
        EXPECT_EQ(found(), expected) << text;
    }
    folder.write("history.log", "Start-Date: 2024-05-02  10:00:00\n");
    pack("history.log.1", transaction);
    EXPECT_EQ(found(), together) << "rotated";
    folder.write("history.log.1.gz", "no archive");
    EXPECT_EQ(found(), alone) << "damaged";
    folder.write("history.log", "Start-Date: 2024-04-01  10:00:00\n" + transaction);
    EXPECT_EQ(found(), together) << "an older log is not read";
    folder.write("dpkg.log", "2024-05-03 02:30:00 startup archives install\n"
                             "2024-05-03 02:00:00 install own:all <none> 1\n"
                             "2024-05-03 02:00:00 status installed own:all 1\n");
    EXPECT_EQ(found(), "own 61200, ") << "the clock was set back, as in autumn";
}

TEST_F(PackageLogTest, SkipsLinesInAnotherFormat) {
    const std::string good = installation("a:all", "1", 2);
    const std::pair<std::string, const char*> cases[] = {
        {"", "a 1 2, 0/0"},
        {"\n\n", "a 1 2, 0/0"},
        {"garbage\n", "a 1 2, 1/0"},
        {std::string("2024-05-02 00:00:00 status in\0stalled b 1\n", 42), "a 1 2, 1/0"},
        {std::string(100, '\0') + "\n" + std::string(1'000'000, 'x') + "\n", "a 1 2, 2/0"},
        {"2024-05-02 00:00:00 install b\xFF <none> 1\n", "a 1 2, 1/0"},
        {"2024-05-02 00:00:00 install \u202Eb <none> 1\n", "a 1 2, 1/0"},
        {"2024-05-02 00:00:00 install b <none> <script>\n", "a 1 2, 1/0"},
        {"2024-05-02 00:00:00 install b <none>\n2024-05-02 00:00:00 status installed b\n",
         "a 1 2, 2/0"},
        {"2024-05-02 00:00:00 install =1+1 <none> 1\n2024-05-02 00:00:00 install  <none> 1\n",
         "a 1 2, 2/0"},
        {"2024-05-02\n2024-05-02 00:00:00\n2024-05-02 00:00:00 \n2024-05-02T00:00:00 status x\n",
         "a 1 2, 3/0"},
        {"2024-13-45 00:00:00 install b <none> 1\n2024-05-02 24:00:00 status installed b 1\n",
         "a 1 2, 2/0"},
        {"2024-05-02 00:00:00 something new from a later version\n", "a 1 2, 0/0"},
        // A damaged line from before the week.
        {"2023-05-02 00:00:00 startup archives unpack\ngarbage\n", "a 1 2, 0/0"},
    };
    for (const auto& [lines, expected] : cases) {
        folder.write("dpkg.log", lines + good);
        EXPECT_EQ(summary(), expected) << lines.substr(0, 80);
    }
    folder.write("dpkg.log", good
                                 + "2024-05-02 00:00:00 install b <none> 1\n"
                                   "2024-05-02 00:00:00 status installed b 1");
    EXPECT_EQ(summary(), "a 1 2, 0/0") << "the last line is still being written";
}

TEST_F(PackageLogTest, ReadsRotatedLogsAsFarBackAsNeeded) {
    EXPECT_EQ(summary(), "0/0") << "other systems have no such log";
    const std::string begun = "2024-05-05 00:00:00 install straddling <none> 1\n";
    const std::string ended = "2024-05-06 00:00:00 status installed straddling 1\n";
    pack("dpkg.log.2", installation("old", "1", 3));
    folder.write("dpkg.log.1", installation("mid", "1", 4) + begun);
    EXPECT_EQ(summary(), "mid 1 4, old 1 3, 0/0") << "just rotated";
    folder.write("dpkg.log", ended + installation("new", "1", 7));
    EXPECT_EQ(summary(), "new 1 7, straddling 1 6, mid 1 4, old 1 3, 0/0");

    pack("dpkg.log.1", installation("mid", "1", 4) + begun);
    EXPECT_EQ(summary(), "new 1 7, straddling 1 6, mid 1 4, old 1 3, 0/0");
    folder.write("dpkg.log", "");
    EXPECT_EQ(summary(), "mid 1 4, old 1 3, 0/0");

    // Older logs are not read.
    folder.write("dpkg.log",
                 "2024-04-01 00:00:00 startup archives unpack\n" + installation("new", "1", 7));
    folder.write("dpkg.log.1.gz", "no archive");
    EXPECT_EQ(summary(), "new 1 7, 0/0");
}

TEST_F(PackageLogTest, FailsWhenALogCannotBeRead) {
    pack("dpkg.log.1", installation("a", "1", 3));
    auto packed = test::contents(folder / "dpkg.log.1.gz");
    folder.write("dpkg.log.1.gz", packed.substr(0, packed.size() - 9));
    EXPECT_EQ(failure(), "reportFailed") << "a truncated archive";
    packed[packed.size() / 2] ^= 0x55;
    folder.write("dpkg.log.1.gz", packed);
    EXPECT_EQ(failure(), "reportFailed") << "a damaged archive";
    std::filesystem::remove(folder / "dpkg.log.1.gz");

    folder.write("elsewhere", installation("a", "1", 3));
    std::filesystem::create_symlink(folder / "elsewhere", folder / "dpkg.log");
    EXPECT_EQ(failure(), "reportFailed") << "a link";
    std::filesystem::remove(folder / "dpkg.log");
    ASSERT_EQ(::mkfifo((folder / "dpkg.log").c_str(), 0600), 0);
    EXPECT_EQ(failure(), "reportFailed") << "a pipe without a writer";
    std::filesystem::remove(folder / "dpkg.log");
    const auto file = folder.write("dpkg.log", installation("a", "1", 3));
    std::filesystem::permissions(file, std::filesystem::perms::none);
    const test::OrdinaryUser user(folder.path());
    EXPECT_EQ(failure(), "reportFailed") << "no permission";
}

TEST_F(PackageLogTest, ReadsNoMoreThanTheLimit) {
    const std::string early = "2024-04-01 00:00:00 status unpacked filler 1\n";
    const std::string late = installation("new", "1", 7);
    std::string ancient;
    for (int i = 0; i < 100; ++i)
        ancient += early;
    folder.write("dpkg.log", ancient + late);
    log.limit = late.size() + 2 * early.size();
    EXPECT_EQ(summary(), "new 1 7, 0/0") << "its end reaches back far enough";
    log.limit = late.size() + early.size() - 1;
    EXPECT_EQ(failure(), "tooLarge");

    // A few kilobytes that decompress to many megabytes.
    std::string lines;
    lines.resize(20'000'000, '\n');
    pack("dpkg.log.1", lines);
    folder.write("dpkg.log", late);
    log.limit = PackageLog{}.limit;
    EXPECT_EQ(failure(), "tooLarge");
}
