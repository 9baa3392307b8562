#include "core/capture/ApplicationsCollector.h"
#include "core/capture/BackgroundCollector.h"
#include "core/capture/FlatpakDeploy.h"
#include "core/capture/PackageAssociation.h"
#include "core/capture/SnapVersion.h"
#include "core/capture/SystemObserver.h"
#include "core/storage/ComponentStorageScanner.h"
#include "core/timeline/EventBuilder.h"
#include "tests/support/ManualClock.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/PropertyLists.h"
#include "tests/support/TemporaryFolder.h"

#include <tuple>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tidemark;
using namespace std::string_literals;
using test::TemporaryFolder;

namespace fs = std::filesystem;

namespace {

using enum RootFamily;

constexpr const char* vendors = "/usr/share/applications";
constexpr const char* users = "/home/me/.local/share/applications";
constexpr const char* flatpakFolder = "/var/lib/flatpak/app";

std::string entryNamed(const std::string& name) {
    return "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=x\n";
}

/// A machine as a folder, with one package in the database of dpkg.
struct Machine {
    TemporaryFolder root;
    PackageIndex packages;

    Machine() {
        root.write("var/lib/dpkg/info/format", "1\n");
        root.makeFolder("var/lib/dpkg/updates");
        install("1:2.4-3");
    }

    void install(const std::string& version) const {
        root.write("var/lib/dpkg/info/harbor.list",
                   vendors + "/harbor.desktop\n/usr/share/agents/harbor.plist\n"s);
        root.write("var/lib/dpkg/status",
                   "Package: harbor\nStatus: install ok installed\nVersion: " + version + "\n\n");
    }

    ObservationOptions options() const {
        ObservationOptions options({{{users, desktopEntries},
                                     {vendors, desktopEntries},
                                     {flatpakFolder, flatpaks},
                                     {"/home/me/Applications", ownApplications}}},
                                   {{{"/usr/share/agents"}}});
        options.machine = MachineFiles::below(root.path());
        return options;
    }

    Snapshot capture() {
        test::ManualClock clock;
        auto snapshot = SystemObserver::captureProgressively(
            options(), nullptr, [](const std::string&) {}, clock, {}, &packages);
        // The free space is that of the machine that runs the test.
        snapshot.freeBytes.reset();
        return snapshot;
    }

    /// "identifier|name|version|build" of each application; "!path" of what is excluded.
    std::vector<std::string> found() {
        const auto snapshot = capture();
        std::vector<std::string> all;
        for (const auto& each : *snapshot.applications)
            all.push_back(each->bundleID + "|" + each->name + "|" + each->version + "|"
                          + each->build);
        for (const auto& path : *snapshot.coverage.excludedPaths)
            all.push_back("!" + path);
        return all;
    }
};

using Texts = std::vector<std::string>;

} // namespace

TEST(ApplicationFormats, ReadsDesktopEntriesOfVisibleApplications) {
    const Texts none;
    const Texts unreadable{"!"s + vendors + "/kde/a.b.desktop"};
    const Texts named{"kde-a.b|A|Unknown version|"};
    std::string large = entryNamed("A") + "X=";
    large.resize(10'000'000, 'x');
    const std::pair<std::string, Texts> cases[] = {
        {"[Desktop Entry]\nName[de]=B\nName=A\nVersion=1.5\nType=Application\n", named},
        {"[Desktop Entry]\nType=Application\nName=A\nOnlyShowIn=X;\nTryExec=/no\nNoDisplay=false\n"
         "[Desktop Action x]\nName=C\nNoDisplay=true\n",
         named},
        {"[Desktop Entry]\nType=Application\nName=A\n\xFF=\xFE\n", named},
        {"[Desktop Entry]\nType=Link\nName=A\n", none},
        {"[Desktop Entry]\nName=A\n", none},
        {entryNamed("A") + "NoDisplay=true\n", none},
        {entryNamed("A") + "Hidden=true\n", none},
        {entryNamed("A") + "NoDisplay=1\n", none},
        {entryNamed("A\\sB"), {"kde-a.b|A B|Unknown version|"}},
        {entryNamed("\\s"), unreadable},
        {"Type=Application\nName=A\n", none},
        {"", none},
        {entryNamed(""), unreadable},
        {entryNamed("A") + "\0"s, unreadable},
        {entryNamed("A") + "[\xFF]\n", unreadable},
        {entryNamed(std::string(5'000, 'A')), unreadable},
        {large, unreadable},
    };
    for (const auto& [bytes, expected] : cases) {
        Machine machine;
        machine.root.write("usr/share/applications/kde/a.b.desktop", bytes);
        machine.root.write("usr/share/applications/mimeinfo.cache", bytes);
        machine.root.write("usr/share/applications/a.DESKTOP", bytes);
        machine.root.makeFolder("usr/share/applications/folder.desktop");
        ::mkfifo((machine.root / "usr/share/applications/fifo.desktop").c_str(), 0600);
        EXPECT_EQ(machine.found(), expected) << bytes.substr(0, 120);
    }
}

TEST(ApplicationFormats, AUsersCopyOfAnEntryIsNotCompared) {
    Machine machine;
    machine.root.write(vendors + 1 + "/harbor.desktop"s, entryNamed("Harbor"));
    const auto before = machine.capture();
    const auto copy = machine.root.write(users + 1 + "/harbor.desktop"s, entryNamed("My Harbor"));
    const auto with = machine.capture();
    machine.root.write(users + 1 + "/harbor.desktop"s, entryNamed("Harbor") + "Hidden=true\n");
    const auto hidden = machine.capture();

    EXPECT_EQ(with.coverage.excludedPaths->count(users + "/harbor.desktop"s), 1U);
    for (const auto& [from, to] : {std::pair(&before, &with), {&with, &hidden}, {&with, &before}})
        EXPECT_TRUE(EventBuilder::build(*from, *to).empty());
    // Without the vendor's entry, the user's is an application of its own.
    fs::remove(machine.root.path() / (vendors + 1) / "harbor.desktop");
    fs::copy_file(machine.root.write("entry", entryNamed("Mine")), copy,
                  fs::copy_options::overwrite_existing);
    EXPECT_EQ(machine.found(), Texts{"harbor|Mine|Unknown version|"});
}

TEST(ApplicationFormats, AnApplicationWithoutAReadableVersionIsNotCompared) {
    Machine machine;
    machine.root.write(vendors + 1 + "/harbor.desktop"s, entryNamed("Harbor"));
    const auto before = machine.capture();
    EXPECT_EQ(machine.found(), Texts{"harbor|Harbor|2.4|1:2.4-3"});

    machine.root.write("var/lib/dpkg/updates/0000", "");
    const auto busy = machine.capture();
    EXPECT_EQ(busy.coverage.issues,
              Texts{"Applications: the version of 1 application could not be read, because the "
                    "records of installations can't be read or are being changed. It is "
                    "excluded from comparisons."});
    EXPECT_EQ(busy.applications->size(), 1U);
    EXPECT_TRUE(EventBuilder::build(before, busy).empty());

    fs::remove(machine.root / "var/lib/dpkg/updates/0000");
    machine.install("1:2.5-1");
    const auto events = EventBuilder::build(before, machine.capture());
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].subtitle, "2.4 → 2.5");

    machine.root.write("var/lib/dpkg/info/format", "2\n");
    const auto newer = machine.capture();
    EXPECT_TRUE(newer.coverage.issues.empty());
    EXPECT_EQ(newer.coverage.notes->size(), 1U);
}

TEST(ApplicationFormats, ReadsFlatpaksWithoutFollowingTheirLinks) {
    const std::string deploy =
        test::contents(fs::path(TIDEMARK_FIXTURES) / "packages/flatpak/deploy");
    const std::string commit = "248a023f0dcfcc65f9580cfa27d22b7e0475560e701ccdd803a0884a7773a780";
    struct Case {
        std::string current, active, deploy;
        Texts expected;
        /// The desktop entry that comes with the application; empty for none.
        std::string entry{};
    };
    const Texts unreadable{"!"s + flatpakFolder + "/org.example.Harbor"};
    // This file has neither name nor version.
    const std::string bare = std::string(8, '\1') + std::string(3, '\0');
    const std::string tooLarge =
        std::string(1 << 20, 'x') + std::string(10, '\0') + '\x10' + std::string(9, '\0');
    const Case cases[] = {
        {"x86_64/stable", commit, tooLarge, unreadable},
        {"x86_64/stable", commit, deploy, {"org.example.Harbor|Harbor Viewer|3.2.1|248a023f0dcf"}},
        {"x86_64/stable",
         commit,
         bare,
         {"org.example.Harbor|org.example.Harbor|Unknown version|248a023f0dcf"}},
        {"x86_64/stable",
         commit,
         bare,
         {"org.example.Harbor|Exported|Unknown version|248a023f0dcf"},
         entryNamed("Exported")},
        {"x86_64/stable", commit, deploy.substr(0, 200), unreadable},
        {"x86_64/stable", commit, "", unreadable},
        {"x86_64/stable", "../stable/" + commit, deploy, unreadable},
        {"x86_64/stable", commit + "0", deploy, unreadable},
        {"x86_64", commit, deploy, unreadable},
        {"../../app/x86_64/stable", commit, deploy, unreadable},
        {"/x86_64/stable", commit, deploy, unreadable},
        {"x86_64/" + std::string(300, 'x'), commit, deploy, unreadable},
        {"../other", commit, deploy, unreadable},
        {"", commit, deploy, {}},
    };
    for (const auto& each : cases) {
        Machine machine;
        const std::string app = flatpakFolder + 1 + "/org.example.Harbor/"s;
        machine.root.write(flatpakFolder + 1 + "/repo"s, "a file");
        const std::string installed = (fs::path(app) / "x86_64/stable" / commit).native();
        machine.root.write(installed + "/deploy", each.deploy);
        if (!each.entry.empty())
            machine.root.write(installed + "/export/share/applications/org.example.Harbor.desktop",
                               each.entry);
        fs::create_symlink(each.active, machine.root / (app + "x86_64/stable/active"));
        // The places to which a link with too few components, or one out of the folder, would lead.
        for (const fs::path& branch :
             {fs::path(app + "x86_64"), fs::path(flatpakFolder + 1) / "other"}) {
            machine.root.write((branch / commit / "deploy").native(), deploy);
            fs::create_symlink(commit, machine.root / (branch / "active").native());
        }
        if (!each.current.empty())
            fs::create_symlink(each.current, machine.root / (app + "current"));
        EXPECT_EQ(machine.found(), each.expected) << each.current << " " << each.active;
    }
    Machine machine;
    fs::permissions(machine.root.makeFolder(flatpakFolder + 1 + "/org.example.Harbor"s),
                    fs::perms::none);
    const test::OrdinaryUser user(machine.root.path());
    EXPECT_EQ(machine.found(), unreadable) << "it may still be installed";
}

TEST(ApplicationFormats, RefusesADeployFileWithWrongOffsets) {
    // Only the parts of the file that are read: a number, a dictionary, and the places at which the
    // three parts before the number end. Those are left out here, so the true places are 0.
    const auto name = [](const std::string& dictionary, char listEnd) {
        const auto record = FlatpakDeploy::parse(std::string(8, '\1') + dictionary
                                                 + std::string{listEnd, '\0', '\0'});
        return record ? record->name.value_or("none") : "refused";
    };
    // An entry is its name, here filled up to 16 bytes, its value, and the place at which the name
    // ends. The dictionary ends with the place at which the entry ends.
    const std::string key = "appdata-name\0\0\0\0"s;
    const std::tuple<const char*, std::string, char, const char*> cases[] = {
        {"no lie", key + "Harbor\0\0s\x0D\x1A"s, '\0', "Harbor"},
        {"no entry", "", '\0', "none"},
        {"a number, not a text", key + "Harbor\0\0u\x0D\x1A"s, '\0', "none"},
        {"a NUL in the text", key + "Har\0or\0\0s\x0D\x1A"s, '\0', "none"},
        {"no file", "", '\x7F', "refused"},
        {"no room for the number", "", '\x01', "refused"},
        {"ends beyond the dictionary", key + "Harbor\0\0s\x0D\xFF"s, '\0', "refused"},
        {"an end beyond the entries", "nnnnnnn\0\x0B\x10\x08"s, '\0', "refused"},
        {"an empty entry", "\0"s, '\0', "refused"},
        {"an entry without a name", "\0\x01"s, '\0', "refused"},
        {"a name that does not end", "nn\0\0\0\0\0\0\x02\x09"s, '\0', "refused"},
        {"a value beyond the entry", "n\0\x02\x03"s, '\0', "refused"},
        {"an entry that ends before it starts", "n\0\0\0\0\0\0\0\2\0\x09\x0A"s, '\0', "refused"},
    };
    for (const auto& [lie, dictionary, listEnd, expected] : cases)
        EXPECT_EQ(name(dictionary, listEnd), expected) << lie;
    EXPECT_FALSE(FlatpakDeploy::parse("\0\0"s));
}

TEST(ApplicationFormats, ReadsAppImagesAndSnaps) {
    Machine machine;
    const std::string image = "\x7F"
                              "ELF\2\1\1\0AI\2 the rest"s;
    const std::string folder = "home/me/Applications/";
    machine.root.write(folder + "Harbor-v1.3.2-x86_64.AppImage", image);
    machine.root.write(folder + "tool.appimage", image);
    machine.root.write(folder + "text.AppImage", "#!/bin/sh");
    machine.root.write(folder + "short.AppImage", image.substr(0, 10));
    machine.root.write(folder + "other.AppImage", "MZ" + image.substr(2));
    machine.root.write(folder + "third.AppImage", "\x7F"
                                                  "ELF\2\1\1\0AI\3"s);
    machine.root.makeFolder(folder + "folder.AppImage");
    machine.root.write("snap/fox/41/meta/snap.yaml", "name: fox\nversion: '123.0-2' # x\n");
    fs::create_symlink("41", machine.root / "snap/fox/current");
    // "deer" and "hare" have links to the files of another snap, and "owl" has no description.
    machine.root.makeFolder("snap/deer/1/meta");
    fs::create_symlink("../fox/41", machine.root / "snap/deer/current");
    machine.root.makeFolder("snap/hare/1/meta");
    fs::create_symlink("1", machine.root / "snap/hare/current");
    fs::create_symlink("../../../fox/41/meta/snap.yaml",
                       machine.root / "snap/hare/1/meta/snap.yaml");
    machine.root.makeFolder("snap/owl/1/meta");
    fs::create_symlink("1", machine.root / "snap/owl/current");
    Texts expected;
    Texts excluded;
    for (const auto& snap :
         {"../fox"s, ""s, "deer"s, "fox"s, "hare"s, "owl"s, std::string(300, 'x')}) {
        const std::string file = std::to_string(expected.size());
        machine.root.write(users + 1 + "/"s + file + ".desktop",
                           entryNamed("A") + "X-SnapInstanceName=" + snap + "\n");
        expected.push_back(file + "|A|" + (snap == "fox" ? "123.0-2|41" : "Unknown version|"));
        if (snap != "fox")
            excluded.push_back("!"s + users + "/" + file + ".desktop");
    }
    expected.push_back("Harbor-v1.3.2-x86_64|Harbor-v1.3.2-x86_64|1.3.2|"
                       + std::to_string(image.size()));
    expected.push_back("tool|tool|Unknown version|" + std::to_string(image.size()));
    expected.insert(expected.end(), excluded.begin(), excluded.end());
    EXPECT_EQ(machine.found(), expected);
    const std::pair<const char*, const char*> names[] = {
        {"nvim", ""},
        {"x86_64", ""},
        {"Cura_5.6.0-linux-X64", "5.6.0"},
        {"Fox 2.0~rc1", "2.0~rc1"},
        {"Harbor-20240501", ""},
        {"v.1-2", ""},
    };
    for (const auto& [name, version] : names)
        EXPECT_EQ(AppImage::versionIn(name), version) << name;
    EXPECT_EQ(SnapVersion::versionIn("  version: 1\nversion: \"2\"\n"), "2");
    EXPECT_EQ(SnapVersion::versionIn("version:\n"), std::nullopt);
}

TEST(ApplicationFormats, OnlyFoldersHaveTheirSizeMeasured) {
    const TemporaryFolder folder;
    folder.write("applications/a.desktop", entryNamed("A"));
    folder.write("Applications/B.AppImage", "\x7F"
                                            "ELF\2\1\1\0AI\2"s);
    folder.write("Applications/C.app/Contents/Info.plist",
                 test::xmlList("<dict><key>CFBundleIdentifier</key><string>c</string></dict>"));
    const ObservationOptions options(
        {{{folder / "applications", desktopEntries}, {folder / "Applications", ownApplications}}},
        std::vector<BackgroundRoot>{}, {folder / "applications", folder / "Applications"});
    test::ManualClock clock;
    ComponentStorageScanner scanner({}, 1'000, clock);
    const auto snapshot =
        SystemObserver::captureProgressively(options, &scanner, [](const std::string&) {}, clock);
    EXPECT_EQ(snapshot.applications->size(), 3U);
    EXPECT_EQ(snapshot.coverage.issues, Texts{});
    ASSERT_TRUE(snapshot.applicationStorage);
    ASSERT_EQ(snapshot.applicationStorage->records.size(), 1U);
    EXPECT_EQ(snapshot.applicationStorage->records[0]->item->identifier, "c");
}

TEST(ApplicationFormats, AssociatesABackgroundItemWithTheOnlyApplicationOfItsPackage) {
    Machine machine;
    machine.root.write("usr/share/agents/harbor.plist",
                       test::xmlList("<dict><key>Label</key><string>x</string></dict>"));
    const auto association = [&] {
        const auto snapshot = machine.capture();
        return snapshot.backgroundItems->at(0)->association.value_or("");
    };
    EXPECT_EQ(association(), "");
    machine.root.write(vendors + 1 + "/harbor.desktop"s, entryNamed("Harbor"));
    EXPECT_EQ(association(), "Possible association based on installed package");
    machine.root.write("var/lib/dpkg/info/harbor.list", vendors + "/harbor.desktop\n"s + vendors
                                                            + "/second.desktop\n"
                                                              "/usr/share/agents/harbor.plist\n");
    machine.root.write(vendors + 1 + "/second.desktop"s, entryNamed("Second"));
    fs::rename(machine.root / "var/lib/dpkg/status", machine.root / "status");
    machine.capture();
    fs::rename(machine.root / "status", machine.root / "var/lib/dpkg/status");
    EXPECT_EQ(association(), "");
}
