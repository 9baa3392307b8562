#include "core/history/InstallationHistory.h"
#include "tests/support/ChangeDuringReading.h"
#include "tests/support/ProcessZone.h"
#include "tests/support/TemporaryFolder.h"

#include <cstring>
#include <fstream>

#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace tidemark;
using test::TemporaryFolder;

namespace fs = std::filesystem;

namespace {

/// The end of the week that is imported: 2024-05-08 00:00 UTC.
constexpr Date logEnd = Date::fromUnix(1'715'126'400);

/// "name version seconds-before-the-end" of each record, with "*" if it is routine; then the number
/// of records that were skipped.
std::string shown(const InstallationPreview& preview) {
    std::string text;
    for (const auto& record : preview.records)
        text += record.name + " " + record.version + " "
                + std::to_string(static_cast<long>(logEnd - record.recordedAt))
                + (record.isRoutine() ? "*, " : ", ");
    return text + std::to_string(preview.skippedRecords);
}

void run(const fs::path& file, const char* commands, const std::string& bytes = {}) {
    fs::create_directories(file.parent_path());
    sqlite3* database = nullptr;
    sqlite3_open(file.c_str(), &database);
    sqlite3_exec(database, commands, nullptr, nullptr, nullptr);
    if (!bytes.empty()) {
        sqlite3_stmt* insert = nullptr;
        sqlite3_prepare_v2(database, "INSERT INTO Packages VALUES (1, ?)", -1, &insert, nullptr);
        sqlite3_bind_blob(insert, 1, bytes.data(), static_cast<int>(bytes.size()),
                          SQLITE_TRANSIENT);
        sqlite3_step(insert);
        sqlite3_finalize(insert);
    }
    sqlite3_close(database);
}

} // namespace

TEST(PacmanHistory, OneTransactionHasOneDate) {
    const test::ProcessZone zone("UTC-1");
    const TemporaryFolder root;
    root.write("var/lib/pacman/local/libtide-2.0-1/desc",
               "%NAME%\nlibtide\n\n%REASON%\n1\n\n%VERSION%\n2.0-1\n");
    root.write("var/lib/pacman/local/harbour-4.2-1/desc", "%NAME%\nharbour\n\n%VERSION%\n4.2-1\n");
    root.write("pacman.log", "[2024-04-01T12:00:00+0000] [ALPM] installed old (1-1)\n"
                             "[2024-05-07T23:59:00+0000] [PACMAN] Running 'pacman -S harbour'\n"
                             "[2024-05-08T01:59:10+0200] [ALPM] transaction started\n"
                             "[2024-05-07T23:59:20+0000] [ALPM] installed libtide (2.0-1)\n"
                             "[2024-05-07T18:59:30-0500] [ALPM] upgraded harbour (4.1-1 -> 4.2-1)\n"
                             "[2024-05-07T23:59:31+0000] [ALPM-SCRIPTLET] installed fake (1)\n"
                             "installed nothing (1)\n"
                             "[2024-05-07T23:59:32+0000] [ALPM] installed a\xFF (1-1)\n"
                             "[2024-05-07T23:59:33+0000] [ALPM] removed libtide (2.0-1)\n"
                             "[2024-05-07T23:59:40+0000] [ALPM] transaction completed\n"
                             "[2024-05-08 00:59] [ALPM] reinstalled keel (1:3-1)\n"
                             "[2024-05-08T99:59:40+0000] [ALPM] installed late (1-1)\n");
    const InstallationHistory::PacmanLog log{.path = root / "pacman.log",
                                             .machine = MachineFiles::below(root.path())};
    EXPECT_EQ(shown(InstallationHistory::collect(logEnd, log)),
              "libtide 2.0-1 50*, harbour 4.2-1 50, keel 1:3-1 60, 1");
    EXPECT_EQ(shown(InstallationHistory::collect(
                  logEnd, InstallationHistory::PacmanLog{.path = root / "none"})),
              "0");
}

TEST(RpmHistory, TakesTheDateOfTheTransactionAndTheReasonOfDnf) {
    const std::string header = test::contents(fs::path(TIDEMARK_FIXTURES) / "packages/rpm/harbor");
    // 2024-05-07 23:59:00 and 2024-04-01, as a little-endian machine writes them.
    const std::string tables = "CREATE TABLE Packages (hnum INTEGER PRIMARY KEY, blob BLOB);"
                               "CREATE TABLE Installtid (key BLOB, hnum INTEGER, idx INTEGER);"
                               "INSERT INTO Installtid VALUES (x'44C03A66', 1, 0),"
                               "                              (x'00F90966', 2, 0);";
    const TemporaryFolder root;
    const auto collected = [&] {
        return shown(InstallationHistory::collect(logEnd, MachineFiles::below(root.path())));
    };
    EXPECT_EQ(collected(), "0");
    run(root / "usr/lib/sysimage/rpm/rpmdb.sqlite", tables.c_str(), header);
    EXPECT_EQ(collected(), "harbor 1:2.4-3 60, 0");
    run(root / "usr/lib/sysimage/libdnf5/transaction_history.sqlite",
        "CREATE TABLE pkg_names (id INTEGER, name TEXT);"
        "CREATE TABLE rpm (item_id INTEGER, name_id INTEGER);"
        "CREATE TABLE trans_item (id INTEGER, item_id INTEGER, reason_id INTEGER);"
        "INSERT INTO pkg_names VALUES (7, 'harbor'); INSERT INTO rpm VALUES (5, 7);"
        "INSERT INTO trans_item VALUES (1, 5, 2), (2, 5, 4);");
    EXPECT_EQ(collected(), "harbor 1:2.4-3 60*, 0");
    {
        const auto database = root / "usr/lib/sysimage/rpm";
        const test::ChangeDuringReading change(database, database / "rpmdb.sqlite");
        EXPECT_THROW(collected(), InstallationHistory::ImportError);
    }
    EXPECT_EQ(collected(), "harbor 1:2.4-3 60*, 0");
    run(root / "usr/lib/sysimage/rpm/rpmdb.sqlite",
        "INSERT INTO Installtid VALUES (x'44C03A', 1, 0)");
    EXPECT_EQ(collected(), "harbor 1:2.4-3 60*, 0") << "a key that is no date";
    run(root / "usr/lib/sysimage/rpm/rpmdb.sqlite",
        "INSERT INTO Installtid VALUES (x'44C03A66', 9, 0)");
    EXPECT_THROW(collected(), InstallationHistory::ImportError) << "no such package";
    const auto again = [&](const std::string& commands, const std::string& package) {
        fs::remove(root / "usr/lib/sysimage/rpm/rpmdb.sqlite");
        run(root / "usr/lib/sysimage/rpm/rpmdb.sqlite", (tables + commands).c_str(), package);
    };
    using namespace std::string_literals;
    again("", "\0\0\0\3\0\0\0\x0F"
              "\0\0\x03\xE8\0\0\0\6\0\0\0\0\0\0\0\1"
              "\0\0\x03\xE9\0\0\0\6\0\0\0\x0B\0\0\0\1"
              "\0\0\x03\xEA\0\0\0\6\0\0\0\x0D\0\0\0\1"
              "gpg-pubkey\0"
              "1\0"
              "2\0"s);
    EXPECT_EQ(collected(), "0") << "a key that signs packages is no installation";
    again("WITH RECURSIVE n(i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < 5000)"
          "INSERT INTO Installtid SELECT x'00F90966', 2, i FROM n;",
          header);
    EXPECT_EQ(collected(), "harbor 1:2.4-3 60*, 0");
    std::fstream damaged(root / "usr/lib/sysimage/rpm/rpmdb.sqlite");
    damaged.seekp(40'960);
    damaged << std::string(4'096, '\xFF') << std::flush;
    EXPECT_THROW(collected(), InstallationHistory::ImportError) << "a page is damaged";
    root.write("usr/lib/sysimage/rpm/rpmdb.sqlite", "SQLite format 3");
    EXPECT_THROW(collected(), InstallationHistory::ImportError);
    fs::remove(root / "usr/lib/sysimage/rpm/rpmdb.sqlite");
    root.write("var/lib/rpm/Packages", "");
    EXPECT_THROW(collected(), InstallationHistory::ImportError) << "an older form";
}
