#include "core/packages/PackageIndex.h"

#include "core/packages/RpmHeader.h"
#include "tests/support/ChangeDuringReading.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TemporaryFolder.h"

#include <fstream>
#include <functional>
#include <span>
#include <tuple>

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>

using namespace tidemark;
using namespace std::string_literals;
using test::TemporaryFolder;

namespace {

constexpr const char* entry = "/usr/share/applications/harbor.desktop";
constexpr const char* unit = "/usr/lib/systemd/system/harbor.service";
const OwnedFolders observedFolders{"/usr/share/applications", "/usr/lib/systemd/system",
                                   "/usr/local/share/applications"};

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

    /// "package version", "-" where no package owns the file, "?" where the owner is unknown, and
    /// "? form" where it is unknown because the form of the database is not supported.
    std::string owner(const std::string& path) {
        auto reading = index.read(MachineFiles::below(root.path()), observedFolders);
        const auto found = reading.owner(path);
        if (!found)
            return found.error() == PackageFailure::unsupported ? "? form" : "?";
        return *found ? (*found)->package + " " + (*found)->version : "-";
    }

    void runInRpm(const char* commands) const {
        sqlite3* database = nullptr;
        sqlite3_open((root / "usr/lib/sysimage/rpm/rpmdb.sqlite").c_str(), &database);
        sqlite3_exec(database, commands, nullptr, nullptr, nullptr);
        sqlite3_close(database);
    }

    /// Makes a file so large that it can't be held in memory.
    void inflate(const char* path) const { std::filesystem::resize_file(root / path, 15LL << 40); }

    /// Moves a file or folder elsewhere, and puts a link to it in its place.
    void replaceByLink(const char* path) const {
        std::filesystem::rename(root / path, root / "elsewhere");
        std::filesystem::create_symlink(root / "elsewhere", root / path);
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
        // An ordinary user may not write beside the database. (Root may, whatever the mode is.)
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

TEST(PackageIndex, ReadsAMachineAnywhereAndClosesItsDatabase) {
    const auto openFiles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const Machine machine;
    machine.writeRpm(harborHeader());
    // The name has characters with a meaning in the URI by which SQLite opens a database.
    const auto root = machine.root.makeFolder("100%41?a#b");
    std::filesystem::rename(machine.root / "usr", root / "usr");
    const auto rpm = MachineFiles::below(root);
    const Machine other;
    other.writeDpkg(dpkgStatus);
    const auto dpkg = MachineFiles::below(other.root.path());
    PackageIndex index;
    const auto package = [&](const MachineFiles& files, const OwnedFolders& folders,
                             const char* path) {
        const auto owner = index.read(files, folders).owner(path);
        return owner && *owner ? (*owner)->package : "-";
    };
    const auto before = openFiles();
    EXPECT_EQ(package(rpm, {"/usr/share/applications"}, entry), "harbor");
    EXPECT_EQ(openFiles(), before);
    const auto bare = MachineFiles::below(other.root.makeFolder("bare"));
    EXPECT_EQ(package(bare, {"/usr/share/applications"}, entry), "-");
    EXPECT_EQ(package(dpkg, {"/usr/share/applications"}, unit), "-");
    EXPECT_EQ(package(dpkg, {"/usr/lib/systemd/system"}, unit), "harbor");
    // Where /lib is a folder rather than a link, a file in it is another one than in /usr/lib.
    std::filesystem::remove(other.root / "lib");
    other.root.makeFolder("lib");
    PackageIndex fresh;
    const auto owner = fresh.read(dpkg, {"/usr/lib/systemd/system"}).owner(unit);
    EXPECT_TRUE(owner && !*owner);
}

TEST(PackageIndex, AnswersAnyNumberOfQuestions) {
    const Machine machine;
    machine.writeRpm(harborHeader());
    PackageIndex index;
    auto reading =
        index.read(MachineFiles::below(machine.root.path()), {"/usr/share/applications"});
    for (int i = 0; i < 20'000; ++i)
        ASSERT_TRUE(reading.owner("/usr/share/applications/" + std::to_string(i))) << i;
    EXPECT_TRUE(reading.owner(entry).value());
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
        {"another format, and rpm knows the file",
         [](auto& it) {
             it.root.write("var/lib/dpkg/info/format", "2\n");
             it.writeRpm(harborHeader());
         },
         "harbor 1:2.4-3"},
        {"status is a FIFO",
         [](auto& it) {
             std::filesystem::remove(it.root / "var/lib/dpkg/status");
             ::mkfifo((it.root / "var/lib/dpkg/status").c_str(), 0600);
         }},
        {"status breaks off", [&](auto& it) { it.writeDpkg(status.substr(0, 20)); }},
        {"status is empty", [](auto& it) { it.writeDpkg(""); }},
        {"dpkg works", [](auto& it) { it.root.write("var/lib/dpkg/updates/0001", "x"); }},
        {"dpkg's work can't be seen",
         [](auto& it) {
             std::filesystem::remove(it.root / "var/lib/dpkg/updates");
             it.root.write("var/lib/dpkg/updates", "");
         }},
        {"a file beside the work of dpkg",
         [](auto& it) { it.root.write("var/lib/dpkg/updates/tmp.i", ""); }, "harbor 1:2.4-3"},
        {"no format",
         [](auto& it) { std::filesystem::remove(it.root / "var/lib/dpkg/info/format"); }, "? form"},
        {"a file in place of the folder",
         [](auto& it) {
             std::filesystem::remove_all(it.root / "var/lib/dpkg");
             it.root.write("var/lib/dpkg", "");
         },
         "-"},
        {"a list is missing",
         [](auto& it) {
             std::filesystem::remove(it.root / "var/lib/dpkg/info/harbor:amd64.list");
         }},
        {"a list is a link",
         [](auto& it) { it.replaceByLink("var/lib/dpkg/info/harbor:amd64.list"); }},
        {"a list is too large",
         [](auto& it) { it.inflate("var/lib/dpkg/info/harbor:amd64.list"); }},
        {"status is too large", [](auto& it) { it.inflate("var/lib/dpkg/status"); }},
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
        {"a version that is no text",
         [&](auto& it) {
             it.writeDpkg("Package: harbor\nStatus: install ok installed\nVersion: 2\xFF\n"
                          "Multi-Arch: same\nArchitecture: amd64\n\nPackage: gone\n\n");
         },
         "harbor 2\uFFFD"
         "FF"},
    };
    const Case pacman[] = {
        {"another version",
         [](auto& it) { it.root.write("var/lib/pacman/local/ALPM_DB_VERSION", "10\n"); }, "? form"},
        {"no version",
         [](auto& it) { it.writePacman("%NAME%\nharbor\n%VERSION%\n", pacmanFiles); }},
        {"a package without files", [](auto& it) { it.writePacman(pacmanDescription, ""); }, "-"},
        {"pacman works", [](auto& it) { it.root.write("var/lib/pacman/db.lck", ""); }},
        {"the name is empty",
         [](auto& it) { it.writePacman("%NAME%\n\n%VERSION%\n1:2.4-3\n\n", pacmanFiles); }},
        {"a field in the middle of a line",
         [](auto& it) {
             it.writePacman("%DESC%\nof %NAME%\nother\n\n"s + pacmanDescription, pacmanFiles);
         },
         "harbor 1:2.4-3"},
        {"a file is a FIFO",
         [](auto& it) {
             const auto file = it.root / "var/lib/pacman/local/harbor-1:2.4-3/desc";
             std::filesystem::remove(file);
             ::mkfifo(file.c_str(), 0600);
         }},
        {"a file is a link",
         [](auto& it) { it.replaceByLink("var/lib/pacman/local/harbor-1:2.4-3/files"); }},
        {"a file is too large",
         [](auto& it) { it.inflate("var/lib/pacman/local/harbor-1:2.4-3/files"); }},
        {"a package is a link",
         [](auto& it) { it.replaceByLink("var/lib/pacman/local/harbor-1:2.4-3"); }, "-"},
    };
    const Case rpm[] = {
        {"the header breaks off", [&](auto& it) { it.writeRpm(header.substr(0, 100)); }},
        {"no database",
         [](auto& it) {
             it.root.write("usr/lib/sysimage/rpm/rpmdb.sqlite", std::string(8192, 'x'));
         }},
        {"the index is cut off",
         [](auto& it) {
             const auto file = it.root / "usr/lib/sysimage/rpm/rpmdb.sqlite";
             std::filesystem::resize_file(file, std::filesystem::file_size(file) - 4096);
         }},
        {"no such package", [](auto& it) { it.runInRpm("DELETE FROM Packages"); }},
        {"a package without a name",
         [&](auto& it) {
             std::string nameless = header;
             nameless[header.find("\0\0\x03\xE8"s) + 3] = '\0';
             it.writeRpm(nameless);
         }},
        {"another file of the name", [](auto& it) { it.runInRpm("UPDATE Basenames SET idx = 0"); },
         "-"},
        {"a number of no file", [](auto& it) { it.runInRpm("UPDATE Basenames SET idx = 9"); }},
        {"a question that takes for ever",
         [](auto& it) {
             it.runInRpm("WITH RECURSIVE n(i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n"
                         "                        WHERE i < 50000)"
                         "INSERT INTO Basenames SELECT 'harbor.desktop', 1, 1 FROM n");
         }},
        {"a query in place of a table",
         [](auto& it) {
             it.runInRpm("DROP TABLE Basenames; CREATE VIEW Basenames AS "
                         "SELECT 'harbor.desktop' AS key, 1 AS hnum, 1 AS idx");
         }},
        {"a finished transaction",
         [](auto& it) { it.root.write("usr/lib/sysimage/rpm/rpmdb.sqlite-wal", ""); },
         "harbor 1:2.4-3"},
        {"a log that can't be read",
         [](auto& it) {
             std::filesystem::create_symlink("rpmdb.sqlite-wal",
                                             it.root / "usr/lib/sysimage/rpm/rpmdb.sqlite-wal");
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
            each.spoil(machine);
            EXPECT_EQ(machine.owner(entry), each.expected) << each.name;
            // No database is asked about files there.
            for (const char* other : {"/usr/local/share/applications/a.desktop", "/opt/a.desktop"})
                EXPECT_EQ(machine.owner(other), "-") << each.name;
        }
    };
    check(dpkg, [&](Machine& machine) { machine.writeDpkg(status); });
    check(pacman, [](Machine& machine) { machine.writePacman(pacmanDescription, pacmanFiles); });
    check(rpm, [&](Machine& machine) { machine.writeRpm(header); });
    using std::filesystem::perms;
    const std::tuple<void (*)(const Machine&), const char*, perms> closed[] = {
        {[](const Machine& machine) { machine.writeDpkg(dpkgStatus); }, "var/lib/dpkg/info",
         perms(0111)},
        {[](const Machine& machine) { machine.writePacman(pacmanDescription, pacmanFiles); },
         "var/lib/pacman/local/harbor-1:2.4-3", perms::none},
    };
    for (const auto& [write, folder, mode] : closed) {
        Machine machine;
        write(machine);
        std::filesystem::permissions(machine.root / folder, mode);
        const test::OrdinaryUser user(machine.root.path());
        EXPECT_EQ(machine.owner(entry), "?") << folder;
    }
}

TEST(PackageIndex, ReadsADatabaseAgainOnlyWhenItChanged) {
    Machine machine;
    machine.writeDpkg(dpkgStatus);
    EXPECT_EQ(machine.owner(entry), "harbor 1:2.4-3");
    // Changing a list in place changes none of the file versions that the index compares, so the
    // list is not read again.
    std::ofstream(machine.root / "var/lib/dpkg/info/harbor:amd64.list") << "/usr\n";
    EXPECT_EQ(machine.owner(entry), "harbor 1:2.4-3");
    machine.root.write("var/lib/dpkg/info/new.list", "");
    EXPECT_EQ(machine.owner(entry), "?");
}

TEST(PackageIndex, StopsReadingOnRequestAndReadsFromTheBeginningTheNextTime) {
    Machine dpkg;
    dpkg.writeDpkg(dpkgStatus);
    Machine pacman;
    pacman.writePacman(pacmanDescription, pacmanFiles);
    for (Machine* machine : {&dpkg, &pacman}) {
        std::stop_source stop;
        stop.request_stop();
        EXPECT_FALSE(
            machine->index
                .read(MachineFiles::below(machine->root.path()), observedFolders, stop.get_token())
                .owner(entry));
        EXPECT_NE(machine->owner(entry), "?");
    }
}

TEST(PackageIndex, ReportsTheOwnerAsUnknownIfADatabaseChangesWhileItIsRead) {
    struct Case {
        std::function<void(const Machine&)> write;
        const char* folder;
        const char* changed;
    };
    const Case cases[] = {
        {[](const Machine& machine) { machine.writeDpkg(dpkgStatus); }, "var/lib/dpkg/info", ""},
        {[](const Machine& machine) { machine.writePacman(pacmanDescription, pacmanFiles); },
         "var/lib/pacman/local", ""},
        {[](const Machine& machine) { machine.writeRpm(harborHeader()); }, "usr/lib/sysimage/rpm",
         "rpmdb.sqlite"},
    };
    for (const auto& [write, folder, changed] : cases) {
        Machine machine;
        write(machine);
        {
            const auto place = machine.root / folder;
            const test::ChangeDuringReading change(place, place / changed);
            EXPECT_EQ(machine.owner(entry), "?") << folder;
        }
        EXPECT_EQ(machine.owner(entry), "harbor 1:2.4-3") << folder;
    }
}

namespace {

struct RpmEntry {
    std::uint32_t tag, type, offset, count;
};

std::string rpmHeader(const std::vector<RpmEntry>& entries, const std::string& data) {
    std::string bytes;
    const auto append = [&](std::size_t number) {
        for (const int shift : {24, 16, 8, 0})
            bytes += static_cast<char>(number >> shift & 0xFF);
    };
    append(entries.size());
    append(data.size());
    for (const auto& [tag, type, offset, count] : entries)
        for (const auto number : {tag, type, offset, count})
            append(number);
    return bytes + data;
}

/// "package version path" of the first file, with "-" for what the header does not have; "refused"
/// if it can't be parsed.
std::string inRpmHeader(std::string_view bytes) {
    const auto header = RpmHeader::parse(bytes);
    if (!header)
        return "refused";
    const auto owner = header->owner();
    return (owner ? owner->package + " " + owner->version : "-") + " "
           + header->file(0).value_or("-");
}

} // namespace

TEST(PackageIndex, RefusesAnRpmHeaderWithWrongOffsetsAndCounts) {
    struct Header {
        RpmEntry name{1000, 6, 0, 1}, version{1001, 6, 7, 1}, release{1002, 6, 9, 1},
            places{1116, 4, 12, 1}, files{1117, 8, 16, 1}, folders{1118, 8, 18, 1};
        std::string data = "harbor\0002\0001\0\0\0\0\0\0f\0/u/\0\0\0"s;

        std::string bytes() const {
            return rpmHeader({name, version, release, places, files, folders}, data);
        }
    };
    const std::tuple<const char*, std::function<void(Header&)>, const char*> lies[] = {
        {"none", [](Header&) {}, "harbor 2-1 /u/f"},
        {"offset at the end", [](Header& it) { it.name.offset = 24; }, "- /u/f"},
        {"offset far beyond", [](Header& it) { it.name.offset = ~0U; }, "- /u/f"},
        {"another type", [](Header& it) { it.name.type = 8; }, "- /u/f"},
        {"no text", [](Header& it) { it.name.count = 0; }, "- /u/f"},
        {"empty name", [](Header& it) { it.name.offset = 6; }, "- /u/f"},
        {"empty version", [](Header& it) { it.version.offset = 6; }, "- /u/f"},
        {"no release", [](Header& it) { it.release.tag = 0; }, "- /u/f"},
        {"a name that is no text", [](Header& it) { it.data[0] = '\xFF'; },
         "\uFFFD"
         "FFarbor 2-1 /u/f"},
        {"no end of the text", [](Header& it) { it.data.resize(21); }, "harbor 2-1 -"},
        {"no number", [](Header& it) { it.places.count = 0; }, "harbor 2-1 -"},
        {"half a number", [](Header& it) { it.places.offset = 21; }, "harbor 2-1 -"},
        {"a folder that is not listed", [](Header& it) { it.data[15] = '\1'; }, "harbor 2-1 -"},
        {"a folder beyond the data",
         [](Header& it) {
             it.data[15] = '\3';
             it.folders.count = 4;
         },
         "harbor 2-1 -"},
    };
    for (const auto& [name, lie, expected] : lies) {
        Header header;
        lie(header);
        EXPECT_EQ(inRpmHeader(header.bytes()), expected) << name;
    }
    const std::string header = Header().bytes();
    for (std::size_t size = 0; size < header.size(); ++size)
        EXPECT_EQ(inRpmHeader(std::string(header, 0, size)), "refused") << size;
    // Counts of entries and of bytes of data that are too large, and one that is too small.
    const std::pair<std::size_t, char> counts[] = {
        {3, '\7'}, {0, '\xFF'}, {7, '\x19'}, {7, '\x17'}};
    for (const auto& [place, value] : counts) {
        std::string lying = header;
        lying[place] = value;
        EXPECT_EQ(inRpmHeader(lying), "refused") << place;
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
