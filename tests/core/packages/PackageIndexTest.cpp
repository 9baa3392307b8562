#include "core/packages/PackageIndex.h"

#include "core/packages/RpmHeader.h"
#include "tests/support/TemporaryFolder.h"

#include <fstream>
#include <functional>
#include <span>

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>

using namespace tidemark;
using namespace std::string_literals;
using test::TemporaryFolder;

namespace {

constexpr const char* entry = "/usr/share/applications/harbor.desktop";
constexpr const char* unit = "/usr/lib/systemd/system/harbor.service";

std::string harborHeader() {
    return test::contents(std::filesystem::path(TIDEMARK_FIXTURES) / "packages/rpm/harbor");
}

/// A machine as a folder, on which /lib is a link to /usr/lib.
struct Machine {
    TemporaryFolder root;
    PackageIndex index;

    Machine() {
        root.makeFolder("usr/lib");
        std::filesystem::create_symlink("usr/lib", root / "lib");
    }

    /// "package version", "-" where no package owns the file, "?" where the owner is unknown.
    std::string owner(const std::string& path) {
        auto reading = index.read(MachineFiles::below(root.path()),
                                  {"/usr/share/applications", "/usr/lib/systemd/system"});
        const auto found = reading.owner(path);
        if (!found)
            return found.error() == PackageFailure::unsupported ? "? form" : "?";
        return *found ? (*found)->package + " " + (*found)->version : "-";
    }

    void writeDpkg(const std::string& status) const {
        root.write("var/lib/dpkg/status", status);
        root.write("var/lib/dpkg/info/format", "1\n");
        root.makeFolder("var/lib/dpkg/updates");
        root.write("var/lib/dpkg/info/harbor:amd64.list",
                   "/.\n/usr\n/lib/systemd/system/harbor.service\n"s + entry + "\n");
        root.write("var/lib/dpkg/info/gone.list", "/usr/share/applications/gone.desktop\n");
    }

    void writePacman(const std::string& description, const std::string& files) const {
        root.write("var/lib/pacman/local/ALPM_DB_VERSION", "9\n");
        root.write("var/lib/pacman/local/harbor-1:2.4-3/desc", description);
        root.write("var/lib/pacman/local/harbor-1:2.4-3/files", files);
    }

    /// A database as rpm 4.18 makes it, with one package of this header.
    std::string writeRpm(const std::string& header) const {
        const auto file = root.makeFolder("usr/lib/sysimage/rpm") / "rpmdb.sqlite";
        std::filesystem::remove(file);
        sqlite3* database = nullptr;
        sqlite3_open(file.c_str(), &database);
        sqlite3_exec(database,
                     "PRAGMA journal_mode = WAL;"
                     "CREATE TABLE 'Packages' (hnum INTEGER PRIMARY KEY AUTOINCREMENT,"
                     "                         blob BLOB NOT NULL);"
                     "CREATE TABLE 'Basenames' (key 'TEXT' NOT NULL, hnum INTEGER NOT NULL,"
                     "                          idx INTEGER NOT NULL);"
                     "CREATE INDEX 'Basenames_key_idx' ON 'Basenames'(key ASC);"
                     "INSERT INTO Basenames VALUES ('harbor.service', 1, 0),"
                     "                             ('harbor.desktop', 1, 1);",
                     nullptr, nullptr, nullptr);
        sqlite3_stmt* insert = nullptr;
        sqlite3_prepare_v2(database, "INSERT INTO Packages VALUES (1, ?)", -1, &insert, nullptr);
        sqlite3_bind_blob(insert, 1, header.data(), static_cast<int>(header.size()),
                          SQLITE_TRANSIENT);
        sqlite3_step(insert);
        sqlite3_finalize(insert);
        sqlite3_close(database);
        return file;
    }
};

constexpr const char* dpkgStatus = "Package: harbor\nStatus: install ok installed\n"
                                   "Architecture: amd64\nMulti-Arch: same\nVersion: 1:2.4-3\n"
                                   "Description: x\n Version: 9\n\n"
                                   "Package: gone\nStatus: deinstall ok config-files\n"
                                   "Version: 1\n\n";
constexpr const char* pacmanDescription = "%NAME%\nharbor\n\n%VERSION%\n1:2.4-3\n\n";
constexpr const char* pacmanFiles = "%FILES%\nusr/\nusr/share/applications/harbor.desktop\n"
                                    "usr/lib/systemd/system/harbor.service\n\n%BACKUP%\n"
                                    "usr/share/applications/backup.desktop\tabc\n";

} // namespace

TEST(PackageIndex, FindsOwnersInEachKindOfDatabase) {
    using Write = void (*)(const Machine&);
    const Write kinds[] = {
        [](const Machine& machine) { machine.writeDpkg(dpkgStatus); },
        [](const Machine& machine) { machine.writePacman(pacmanDescription, pacmanFiles); },
        [](const Machine& machine) { machine.writeRpm(harborHeader()); },
        // Read by an ordinary user, who may not write beside the database.
        [](const Machine& machine) {
            ::chmod(std::filesystem::path(machine.writeRpm(harborHeader())).parent_path().c_str(),
                    0555);
        },
    };
    for (const Write write : kinds) {
        Machine machine;
        EXPECT_EQ(machine.owner(entry), "-");
        write(machine);
        EXPECT_EQ(machine.owner(entry), "harbor 1:2.4-3");
        EXPECT_EQ(machine.owner(unit), "harbor 1:2.4-3");
        for (const char* other :
             {"/usr/share/applications/gone.desktop", "/usr/share/applications/backup.desktop",
              "/usr/local/harbor.desktop", "/usr/share/applications/%"})
            EXPECT_EQ(machine.owner(other), "-") << other;
    }
}

TEST(PackageIndex, ReportsTheOwnerAsUnknownIfADatabaseIsDamagedOrBusy) {
    const std::string status = dpkgStatus;
    const std::string header = harborHeader();
    struct Case {
        const char* name;
        std::function<void(const Machine&)> spoil;
        std::string expected = "?";
    };
    const Case dpkg[] = {
        {"another format", [](auto& it) { it.root.write("var/lib/dpkg/info/format", "2\n"); },
         "? form"},
        {"status breaks off", [&](auto& it) { it.writeDpkg(status.substr(0, 20)); }},
        {"status is empty", [](auto& it) { it.writeDpkg(""); }},
        {"dpkg works", [](auto& it) { it.root.write("var/lib/dpkg/updates/0001", "x"); }},
        {"a list is a FIFO",
         [](auto& it) {
             std::filesystem::remove(it.root / "var/lib/dpkg/info/harbor:amd64.list");
             ::mkfifo((it.root / "var/lib/dpkg/info/harbor:amd64.list").c_str(), 0600);
         }},
        {"status leads out of the machine",
         [](auto& it) {
             std::filesystem::remove(it.root / "var/lib/dpkg/status");
             it.root.write("status", dpkgStatus);
             std::filesystem::create_symlink(it.root / "status", it.root / "var/lib/dpkg/status");
         },
         "-"},
        {"status is a link in a circle",
         [](auto& it) {
             std::filesystem::remove(it.root / "var/lib/dpkg/status");
             std::filesystem::create_symlink("status", it.root / "var/lib/dpkg/status");
         }},
        {"a reinstallation by dpkg",
         [&](auto& it) {
             it.writeDpkg("Package: harbor\nStatus: install ok half-configured\nVersion: 2-1\n"
                          "Multi-Arch: same\nArchitecture: amd64\n\nPackage: gone\n\n");
         },
         "harbor 2-1"},
    };
    const Case pacman[] = {
        {"another version",
         [](auto& it) { it.root.write("var/lib/pacman/local/ALPM_DB_VERSION", "10\n"); }, "? form"},
        {"no version",
         [](auto& it) { it.writePacman("%NAME%\nharbor\n%VERSION%\n", pacmanFiles); }},
        {"pacman works", [](auto& it) { it.root.write("var/lib/pacman/db.lck", ""); }},
    };
    const Case rpm[] = {
        {"the header breaks off", [&](auto& it) { it.writeRpm(header.substr(0, 100)); }},
        {"no database",
         [](auto& it) {
             it.root.write("usr/lib/sysimage/rpm/rpmdb.sqlite", std::string(8192, 'x'));
         }},
        {"an unfinished transaction",
         [](auto& it) { it.root.write("usr/lib/sysimage/rpm/rpmdb.sqlite-wal", "x"); }},
        {"an older form",
         [](auto& it) {
             std::filesystem::remove(it.root / "usr/lib/sysimage/rpm/rpmdb.sqlite");
             it.root.write("var/lib/rpm/Packages.db", "x");
         },
         "? form"},
    };
    const auto check = [](std::span<const Case> cases, const std::function<void(Machine&)>& write) {
        for (const auto& each : cases) {
            Machine machine;
            write(machine);
            ASSERT_EQ(machine.owner(entry), "harbor 1:2.4-3");
            each.spoil(machine);
            EXPECT_EQ(machine.owner(entry), each.expected) << each.name;
        }
    };
    check(dpkg, [&](Machine& machine) { machine.writeDpkg(status); });
    check(pacman, [](Machine& machine) { machine.writePacman(pacmanDescription, pacmanFiles); });
    check(rpm, [&](Machine& machine) { machine.writeRpm(header); });
}

TEST(PackageIndex, ReadsADatabaseAgainOnlyWhenItChanged) {
    Machine machine;
    machine.writeDpkg(dpkgStatus);
    EXPECT_EQ(machine.owner(entry), "harbor 1:2.4-3");
    // A list that changes in place changes no status that is compared: it was not read again.
    std::ofstream(machine.root / "var/lib/dpkg/info/harbor:amd64.list") << "/usr\n";
    EXPECT_EQ(machine.owner(entry), "harbor 1:2.4-3");
    machine.root.write("var/lib/dpkg/info/new.list", "");
    EXPECT_EQ(machine.owner(entry), "?");
}

TEST(PackageIndex, TakesNothingInAnRpmHeaderOnTrust) {
    const std::string header = harborHeader();
    const auto everything = [](std::string_view bytes) {
        if (const auto parsed = RpmHeader::parse(bytes))
            return parsed->owner().has_value() + parsed->file(0).value_or("").size()
                   + parsed->file(1u << 31).value_or("").size();
        return std::size_t{0};
    };
    EXPECT_GT(everything(header), 30);
    for (std::size_t size = 0; size < header.size(); ++size)
        EXPECT_EQ(everything(header.substr(0, size)), 0);
    for (std::size_t place = 0; place < header.size(); ++place) {
        std::string changed = header;
        changed[place] = '\xFF';
        everything(changed);
    }
}

TEST(PackageIndex, FindsTheVersionOfTheProgramInThatOfThePackage) {
    const std::pair<const char*, const char*> cases[] = {
        {"1:2.36-8+deb12u1", "2.36"}, {"115.0", "115.0"},       {"2.4~rc1-1-3", "2.4~rc1-1"},
        {"v1:2-1", "v1:2"},           {"20240501", "20240501"}, {"-1", ""},
    };
    for (const auto& [whole, upstream] : cases)
        EXPECT_EQ(upstreamVersion(whole), upstream);
}
