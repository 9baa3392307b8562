#include "app/capture/FolderAccess.h"

#include "app/preferences/PreferenceKeys.h"
#include "core/base/Error.h"
#include "core/base/JsonEncoder.h"
#include "core/capture/StandardRoots.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/MemoryPreferences.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TemporaryFolder.h"

#include <set>

#include <gtest/gtest.h>

using namespace tidemark;
namespace fs = std::filesystem;
using enum FolderPurpose;
using test::TemporaryFolder;

namespace {

constexpr std::string_view bookmarksKey = preferenceKeys::observationFolderBookmarks.name;
const std::string noApplications =
    "No Applications folder has active access. Choose one in Settings to track app changes.";
const std::string noBackground = "Background definitions are not observed until you allow a "
                                 "LaunchAgents or LaunchDaemons folder in Settings.";

struct FolderAccessTest : testing::Test {
    /// Creates the object anew, as a new start of the program does.
    void restart(bool isTrashGuarded = true) {
        access.emplace(preferences, BookmarkOperations::direct(),
                       std::vector<RecommendedFolder>{
                           {"Applications", folder / "Applications", applications},
                           {"Downloads", folder / "Downloads", storage},
                           {"Trash", folder / ".Trash", storage, isTrashGuarded},
                       });
    }
    void add(const fs::path& path) {
        test::await(access->add({path}, FolderGrant::suggestedPurposes));
    }
    FolderCaptureAccess capture(bool measureStorage = true) {
        return test::await(access->beginCapture(measureStorage));
    }
    std::string paths() const {
        std::string text;
        for (const auto& grant : access->grants())
            text += (text.empty() ? "" : " ") + fs::path(grant.path).filename().native();
        return text;
    }
    std::string message() const { return access->message().value_or("none"); }

    const TemporaryFolder folder;
    test::MemoryPreferences preferences;
    std::optional<FolderAccess> access;

    FolderAccessTest() { restart(); }
};

} // namespace

TEST(FolderGrant, ReadsTheStoredFormsOfEarlierReleases) {
    const std::string id = "\"id\":\"E621E1F8-C36C-495A-93FC-0C247A3E6E5F\",\"bookmark\":\"YQ==\",";
    const auto grants =
        FolderGrant::decodeList("[{" + id + R"("path":"/Applications","purpose":"applications"},)"
                                + "{" + id + R"("path":"/x/../home/.Trash/","purposes":[]},)" + "{"
                                + id + R"("path":"/home/.Trash","purposes":["launchAgents"],)"
                                + R"("availablePurposes":["launchAgents"],"purpose":"new"}])");
    EXPECT_EQ(grants[0].purposes, FolderPurposes{applications});
    EXPECT_EQ(grants[0].availablePurposes, (FolderPurposes{applications, storage}));
    EXPECT_EQ(grants[1].purposes, FolderPurposes{});
    EXPECT_EQ(grants[2].purposes, FolderPurposes{launchAgents});
    for (const char* damage : {R"("path":"/Applications"}])", R"("path":"/a","purpose":"new"}])"})
        EXPECT_THROW(FolderGrant::decodeList("[{" + id + damage), Error);

    const auto unified = FolderGrant::unified(grants);
    ASSERT_EQ(unified.size(), 2U);
    EXPECT_EQ(unified[1].path, "/home/.Trash");
    EXPECT_EQ(unified[1].purposes, FolderPurposes{launchAgents});
    EXPECT_EQ(unified[1].availablePurposes, (FolderPurposes{launchAgents, storage}));
    EXPECT_EQ(FolderGrant::decodeList(json::encoded(unified)), unified);
}

TEST_F(FolderAccessTest, GrantsBecomeTheRootsOfACapture) {
    const auto apps = folder.makeFolder("Applications");
    const auto agents = folder.makeFolder("LaunchAgents");
    const auto daemons = folder.makeFolder("LaunchDaemons");
    const auto plain = folder.makeFolder("plain");
    for (const auto& path : {apps, agents, daemons, plain})
        add(path);

    const auto all = capture();
    const auto family = StandardRoots::applicationRoot(apps, StandardRoots::Places::current());
    EXPECT_EQ(all.options, ObservationOptions({{family}},
                                              {{{agents, BackgroundItem::Kind::agent},
                                                {daemons, BackgroundItem::Kind::daemon}}},
                                              {apps, agents, daemons, plain}));
    EXPECT_TRUE(all.issues.empty());
    EXPECT_EQ(access->accessStatus(plain), FolderAccess::AccessStatus::readable);

    restart();
    EXPECT_EQ(access->accessStatus(plain), FolderAccess::AccessStatus::unchecked);
    EXPECT_EQ(capture(false).options.storageRoots, std::vector<fs::path>());
    EXPECT_EQ(access->accessStatus(plain), FolderAccess::AccessStatus::unchecked);
}

#ifndef __APPLE__
TEST_F(FolderAccessTest, AFolderThatRepresentsOthersGrantsThemEvenIfItIsMissing) {
    const auto home = folder.makeFolder("home");
    const auto autostart = folder.makeFolder("home/.config/autostart");
    const std::string before = SystemFacts::homeDirectory();
    ::setenv("HOME", home.c_str(), 1);
    auto recommended = RecommendedFolder::ofLinux(home, [](const char*) { return std::nullopt; });
    std::erase_if(recommended, [](const auto& each) { return each.purpose != launchAgents; });
    test::await(access->enableReadableRecommended(recommended));
    EXPECT_EQ(access->grants().at(0).purposes, FolderPurposes{launchAgents});
    const auto agents = StandardRoots::agents(StandardRoots::Places::current());
    EXPECT_EQ(capture().options.backgroundRoots, agents);
    fs::remove(autostart);
    const auto later = capture();
    EXPECT_EQ(later.options.backgroundRoots, agents);
    EXPECT_EQ(later.issues, std::vector{noApplications});
    ::setenv("HOME", before.c_str(), 1);
}
#endif

TEST_F(FolderAccessTest, AnUntrackedFolderIsKeptButSkipped) {
    add(folder.makeFolder("Applications"));
    const Uuid id = access->grants()[0].id;
    access->setTracking(applications, false, id);
    access->setTracking(storage, false, id);
    EXPECT_EQ(access->selection().size(), 0U);
    EXPECT_EQ(capture().issues, (std::vector{noApplications, noBackground}));

    restart();
    EXPECT_EQ(access->grants()[0].availablePurposes, (FolderPurposes{applications, storage}));
    access->setTracking(launchAgents, true, id);
    EXPECT_EQ(access->grants()[0].purposes, FolderPurposes{launchAgents});
    EXPECT_TRUE(access->grants()[0].availablePurposes.contains(launchAgents));
}

TEST_F(FolderAccessTest, ReportsWhyAFolderCannotBeOpened) {
    const auto path = folder.makeFolder("place");
    add(path);
    const auto issue = "Folder access is unavailable for " + path.native()
                       + ". Recheck access in Monitored Folders. Trash requires Full Disk Access "
                         "for the installed copy of Tidemark.";
    const auto expectFailure = [&](const char* failure) {
        EXPECT_EQ(capture().issues, (std::vector{issue, noApplications, noBackground}));
        EXPECT_EQ(access->accessStatus(path), FolderAccess::AccessStatus::unavailable);
        EXPECT_EQ(access->accessFailure(path), failure);
    };
    fs::permissions(path, fs::perms::none);
    {
        const test::OrdinaryUser user(folder.path());
        expectFailure("macOS denied folder access to this running copy of Tidemark.");
    }
    fs::remove(path);
    expectFailure("Folder does not currently exist.");
    folder.write("place", "");
    expectFailure("This location is not a folder.");

    fs::remove(path);
    folder.makeFolder("place");
    EXPECT_EQ(capture().options.storageRoots, std::vector{path});
    EXPECT_EQ(access->accessFailure(path), std::nullopt);
}

TEST_F(FolderAccessTest, ABookmarkThatCannotBeReadIsASeparateIssue) {
    preferences.set(bookmarksKey,
                    Data{R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","path":"/elsewhere",)"
                         R"("bookmark":"Ym9vaw==","purposes":["storage"]}])"});
    restart();
    EXPECT_EQ(capture().issues.front(),
              "Couldn’t restore access to /elsewhere. Choose the folder again in Settings.");
    EXPECT_EQ(access->accessStatus("/elsewhere"), FolderAccess::AccessStatus::unchecked);
}

TEST_F(FolderAccessTest, RenewsStaleBookmarksWithOneWrite) {
    for (const char* name : {"a", "b"}) {
        add(folder.makeFolder(name));
        fs::rename(folder / name, folder / (std::string("old-") + name));
        folder.makeFolder(name);
    }
    const auto before = access->grants();
    const int changes = preferences.changes;
    EXPECT_EQ(capture().options.storageRoots, (std::vector{folder / "a", folder / "b"}));
    EXPECT_EQ(preferences.changes, changes + 1);
    EXPECT_NE(access->grants()[0].bookmark, before[0].bookmark);
    EXPECT_EQ(access->grants()[0].id, before[0].id);
    capture();
    EXPECT_EQ(preferences.changes, changes + 1);

    fs::rename(folder / "b", folder / "older-b");
    folder.makeFolder("b");
    preferences.refuses = true;
    const auto unsaved = capture();
    EXPECT_EQ(unsaved.options.storageRoots.size(), 2U);
    EXPECT_EQ(unsaved.issues.front(), "Updated folder access couldn’t be saved.");
}

TEST_F(FolderAccessTest, AFolderReplacedByALinkIsNotFollowed) {
    add(folder.makeFolder("a"));
    add(folder.makeFolder("b"));
    const auto before = access->grants();
    fs::remove(folder / "b");
    fs::create_directory_symlink(folder / "a", folder / "b");
    EXPECT_EQ(capture().options.storageRoots, std::vector{folder / "a"});
    EXPECT_EQ(access->accessFailure(folder / "b"), "This location is not a folder.");
    EXPECT_EQ(access->grants(), before);
}

TEST_F(FolderAccessTest, KeepsEachRealPathOnce) {
    const auto real = folder.makeFolder("real");
    fs::create_directory_symlink(real, folder / "link");
    const auto odd = folder.makeFolder("odd\xFF");
    test::await(access->add({folder / "link", real, folder / "real/../real/", odd},
                            FolderGrant::suggestedPurposes));
    EXPECT_EQ(access->grants().size(), 2U);
    EXPECT_EQ(access->grants()[0].path, real.native());
    EXPECT_EQ(capture().options.storageRoots, (std::vector{real, odd}));
}

TEST_F(FolderAccessTest, SuggestsPurposesByTheNameOfTheLinkToo) {
    const auto real = folder.makeFolder("opt/apps");
    fs::create_directory_symlink(real, folder / "Applications");
    add(folder / "Applications");
    EXPECT_EQ(paths(), "apps");
    EXPECT_EQ(access->grants()[0].purposes, (FolderPurposes{applications, storage}));
    EXPECT_EQ(access->grants()[0].availablePurposes, (FolderPurposes{applications, storage}));
}

TEST_F(FolderAccessTest, AddsAllFoldersOrNone) {
    const auto good = folder.makeFolder("good");
    EXPECT_THROW(
        test::await(access->add({good, folder / "missing"}, FolderGrant::suggestedPurposes)),
        Error);
    EXPECT_TRUE(access->grants().empty());
    preferences.refuses = true;
    EXPECT_THROW(add(good), Error);
    EXPECT_TRUE(access->grants().empty());
    preferences.refuses = false;
    restart();
    EXPECT_TRUE(access->grants().empty()) << "nothing was saved";
}

TEST_F(FolderAccessTest, AFolderRemovedWhileACaptureOpensItIsNotObserved) {
    add(folder.makeFolder("a"));
    add(folder.makeFolder("b"));
    auto opening = access->beginCapture(true);
    access->remove(access->grants()[0].id);
    EXPECT_EQ(test::await(std::move(opening)).options.storageRoots, std::vector{folder / "b"});
    EXPECT_EQ(paths(), "b");
}

TEST_F(FolderAccessTest, StopsEachStartedFolderOnce) {
    std::map<std::string, int> open;
    auto counted = BookmarkOperations::direct();
    counted.start = [&](const fs::path& path) {
        ++open[path];
        return true;
    };
    counted.stop = [&](const fs::path& path) { --open[path]; };
    counted.create = [create = counted.create](const fs::path& path) {
        if (path.filename() == "refused")
            throw Error("Refused.");
        return create(path);
    };
    access.emplace(preferences, counted);
    const auto path = folder.makeFolder("a");
    add(path);
    EXPECT_THROW(add(folder.makeFolder("refused")), Error);
    EXPECT_EQ(open[path], 0);
    EXPECT_EQ(open[folder / "refused"], 0);
    {
        auto first = capture();
        EXPECT_EQ(open[path], 1);
        first.finish();
        first.finish();
        EXPECT_EQ(open[path], 0);
        const auto second = capture();
        EXPECT_EQ(open[path], 1);
    }
    EXPECT_EQ(open[path], 0);
}

TEST_F(FolderAccessTest, MigratesTheStorageSwitchOnce) {
    add(folder.makeFolder("Applications"));
    preferences.remove("unifiedFolderTrackingMigrated");
    preferences.set("storageEnabled", false);
    restart();
    EXPECT_EQ(access->grants()[0].purposes, FolderPurposes{applications});
    access->setTracking(storage, true, access->grants()[0].id);
    restart();
    EXPECT_EQ(access->grants()[0].purposes, (FolderPurposes{applications, storage}));

    preferences.remove("unifiedFolderTrackingMigrated");
    preferences.readOnly = true;
    const int changes = preferences.changes;
    restart();
    EXPECT_EQ(access->grants()[0].purposes, FolderPurposes{applications});
    EXPECT_EQ(preferences.changes, changes) << "read-only preferences are not changed";

    preferences.readOnly = false;
    preferences.refuses = true;
    restart();
    EXPECT_EQ(access->grants()[0].purposes, FolderPurposes{applications}) << "full disk";
    EXPECT_EQ(message(), "none");
}

TEST_F(FolderAccessTest, ReportsThatSavedAccessCannotBeRead) {
    for (const char* damage : {"[{", "{}", "[{\"id\":\"x\"}]"}) {
        preferences.set(bookmarksKey, Data{damage});
        restart();
        EXPECT_TRUE(access->grants().empty());
        EXPECT_EQ(message(), "Saved folder access couldn’t be read. Choose folders again to "
                             "restore observation.");
        EXPECT_EQ(preferences.data(bookmarksKey), Data{damage});
    }
}

TEST_F(FolderAccessTest, EnablesTheRecommendedFoldersThatCanBeRead) {
    folder.makeFolder("Applications");
    add(folder.makeFolder("gone"));
    fs::remove(folder / "gone");
    test::await(access->enableReadableRecommended(access->recommendedFolders()));
    EXPECT_EQ(message(), "Not yet readable: Downloads, Trash, gone. Check System Settings or "
                         "folder permissions.");
    EXPECT_FALSE(access->messageIsSuccess());
    EXPECT_EQ(paths(), "gone Applications");
    EXPECT_EQ(access->grants()[1].purposes, (FolderPurposes{applications, storage}));
    EXPECT_EQ(access->accessFailure(folder / "Downloads"), "Folder does not currently exist.");

    fs::create_directory_symlink(folder.makeFolder("elsewhere"), folder / "Downloads");
    folder.makeFolder(".Trash");
    folder.makeFolder("gone");
    test::await(access->enableReadableRecommended(access->recommendedFolders()));
    EXPECT_EQ(message(), "All selected folders are ready.");
    EXPECT_TRUE(access->messageIsSuccess());
    EXPECT_EQ(paths(), "gone Applications elsewhere .Trash");
    EXPECT_TRUE(access->isGranted(folder / "elsewhere"));
    const auto once = access->grants();
    std::multiset<fs::path> asked;
    test::await(
        access->enableReadableRecommended(access->recommendedFolders(), [&](const fs::path& path) {
            asked.insert(path.filename());
            return true;
        }));
    EXPECT_EQ(access->grants(), once);
    EXPECT_EQ(asked, (std::multiset<fs::path>{".Trash", "Applications", "elsewhere", "gone"}));
    for (const char* name : {"Downloads", "elsewhere"})
        EXPECT_EQ(access->accessStatus(folder / name), FolderAccess::AccessStatus::readable);

    test::await(access->enableReadableRecommended(access->recommendedFolders(),
                                                  [](const fs::path&) { return false; }));
    EXPECT_EQ(access->accessFailure(folder / ".Trash"),
              "Folder access was unavailable during the check.");
}

TEST_F(FolderAccessTest, AFolderRemovedDuringACheckIsNotAllowedAgain) {
    add(folder.makeFolder("Downloads"));
    add(folder.makeFolder("Applications"));
    auto checking = access->enableReadableRecommended(access->recommendedFolders());
    access->remove(access->grants()[0].id);
    test::await(std::move(checking));
    EXPECT_EQ(paths(), "Applications");
}

TEST_F(FolderAccessTest, RestoresTheTrashUnlessTheUserRemovedIt) {
    const auto restore = [&] {
        return test::await(access->restoreRecommendedAccessAfterRestart());
    };
    folder.makeFolder("Downloads");
    folder.makeFolder(".Trash");
    EXPECT_FALSE(restore()) << "before the setup";

    access->completeSetup();
    restart(false);
    EXPECT_FALSE(restore()) << "not guarded by the system, so readable without consent";
    preferences.set("diskAccessSetupPending", true);
    EXPECT_FALSE(restore()) << "also not after the user went to grant full disk access";
    preferences.set("diskAccessSetupPending", false);
    restart();
    EXPECT_TRUE(restore());
    EXPECT_EQ(paths(), ".Trash") << "only the Trash is restored";
    EXPECT_FALSE(restore());
    access->remove(access->grants()[0].id);
    EXPECT_EQ(preferences.texts("removedRecommendedPaths"),
              std::vector<std::string>{folder / ".Trash"});
    EXPECT_FALSE(restore());
    add(folder.makeFolder("plain"));
    const int changes = preferences.changes;
    access->remove(access->grants()[0].id);
    restart();
    EXPECT_EQ(preferences.changes, changes + 1) << "it was not a recommended folder";

    preferences.set("diskAccessSetupPending", true);
    EXPECT_TRUE(restore());
    EXPECT_EQ(paths(), "Downloads");
    EXPECT_FALSE(restore());
}
