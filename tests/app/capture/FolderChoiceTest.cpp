#include "app/capture/FolderAccess.h"
#include "core/base/Error.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/app/support/MemoryPreferences.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace tidemark;
namespace fs = std::filesystem;
using enum FolderPurpose;
using test::TemporaryFolder;

namespace {

QCoro::Task<std::vector<fs::path>> picked(std::vector<fs::path> folders) {
    co_return folders;
}

QCoro::Task<std::vector<fs::path>> pickedLater(AppClock* clock, fs::path folder) {
    co_await clock->sleep(10, {}, AppClock::Slack::none);
    std::vector<fs::path> folders{folder};
    co_return folders;
}

struct FolderChoice : testing::Test {
    bool choose(std::optional<fs::path> suggested, std::vector<fs::path> folders,
                std::optional<FolderPurpose> purpose = {}) {
        return test::await(access.choose(
            purpose, std::move(suggested),
            [folders = std::move(folders)](const FolderRequest&) { return picked(folders); }));
    }
    std::string message() const { return access.message().value_or("none"); }

    const TemporaryFolder folder;
    test::MemoryPreferences preferences;
    FolderAccess access{preferences, BookmarkOperations::direct()};
};

} // namespace

TEST(FolderRequest, OpensAboveTheHiddenTrash) {
    const auto trash = FolderRequest::of("/home/.Trash/");
    EXPECT_TRUE(trash.showsHiddenFiles && !trash.isRestorable && !trash.allowsSeveral);
    EXPECT_EQ(trash.opensAt, "/home");
    EXPECT_EQ(FolderRequest::of("/home/a").opensAt, "/home/a");
    EXPECT_TRUE(FolderRequest::of(std::nullopt).allowsSeveral);
}

TEST(FolderRequest, RefusesAnyOtherFolderThanTheOneSuggested) {
    EXPECT_EQ(FolderRequest::of(std::nullopt).refusal("/anything"), std::nullopt);
    const auto trash = FolderRequest::of("/home/.Trash");
    EXPECT_EQ(trash.refusal("/home/x/../.Trash/"), std::nullopt);
    EXPECT_EQ(trash.refusal("/home"),
              "Select the .Trash folder, not your home folder. Hidden folders are visible. You can "
              "also press Shift–Command–G and enter /home/.Trash");
    EXPECT_EQ(FolderRequest::of("/home/Downloads/").refusal("/home"),
              "Select Downloads to approve this recommended folder.");
}

TEST_F(FolderChoice, GrantsThePickedFolders) {
    const auto agents = folder.makeFolder("LaunchAgents");
    const auto plain = folder.makeFolder("plain");
    EXPECT_FALSE(choose(std::nullopt, {}));
    EXPECT_TRUE(choose(std::nullopt, {agents, plain}));
    ASSERT_EQ(access.grants().size(), 2U);
    EXPECT_EQ(access.grants()[0].purposes, (FolderPurposes{launchAgents, storage}));
    EXPECT_TRUE(choose(folder / "daemons", {folder.makeFolder("daemons")}, launchDaemons));
    EXPECT_EQ(access.grants()[2].purposes, FolderPurposes{launchDaemons});
    EXPECT_EQ(access.grants()[2].availablePurposes, (FolderPurposes{launchDaemons, storage}));
}

TEST_F(FolderChoice, KeepsNothingOfAWrongOrFailedChoice) {
    EXPECT_FALSE(choose(folder / "Downloads", {folder.makeFolder("other")}));
    EXPECT_EQ(message(), "Please select Downloads, or deselect that folder from setup. No access "
                         "was saved for the different folder.");
    EXPECT_FALSE(choose(std::nullopt, {folder / "other", folder / "missing"}));
    EXPECT_EQ(message(), "Couldn’t remember the selected folders. No new folders were saved. "
                         "Folder does not currently exist.");
    EXPECT_TRUE(access.grants().empty());
}

TEST_F(FolderChoice, MayBeDestroyedWhileThePanelIsOpen) {
    test::ManualAppClock clock;
    std::optional<FolderAccess> leaving(std::in_place, preferences, BookmarkOperations::direct());
    auto choosing = leaving->choose(std::nullopt, std::nullopt, [&](const FolderRequest&) {
        return pickedLater(&clock, folder.path());
    });
    leaving.reset();
    clock.advance(10);
    EXPECT_FALSE(test::await(std::move(choosing)));
}
