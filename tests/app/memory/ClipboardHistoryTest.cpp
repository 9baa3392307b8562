#include "app/memory/ClipboardHistory.h"

#include "app/memory/MemoryHistoryService.h"
#include "core/memory/ClipTypes.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/app/support/MemoryPreferences.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

struct TestClipboard final : Clipboard {
    void watch(std::string list, Copied report, AccessChanged changed) override {
        excluded = std::move(list);
        copied = std::move(report);
        accessChanged = std::move(changed);
    }
    void unwatch() override { copied = {}; }
    bool put(std::vector<ClipData> data) override {
        contents = std::move(data);
        return true;
    }

    std::string excluded;
    Copied copied;
    AccessChanged accessChanged;
    std::vector<ClipData> contents;
};

struct ClipboardHistoryTest : testing::Test {
    ClipboardHistoryTest() { preferences.set("memoryClipboard", true); }

    void start() {
        test::await(service.load());
        service.start();
    }
    void copy(const std::string& text) {
        clock.advance(1);
        const std::string type(clipTypes::of(ClipPart::text)[0]);
        clipboard.copied({{{ClipPart::text, {type, text}}}, {}});
    }
    std::string clips() const {
        std::string all;
        for (const auto& clip : service.clips())
            all += *clip->text + " ";
        return all;
    }

    const test::TemporaryFolder folder;
    test::ManualAppClock clock;
    test::MemoryPreferences preferences;
    NotificationCenter workspace;
    std::unique_ptr<TestClipboard> made = std::make_unique<TestClipboard>();
    TestClipboard& clipboard = *made;
    ClipboardHistory history{preferences, std::move(made), clock};
    bool allowed = true;
    MemoryHistoryService service{{.url = folder / "data/memory-history.json",
                                  .preferences = preferences,
                                  .workspaceCenter = workspace,
                                  .clock = clock,
                                  .collectors = {&history},
                                  .collectionAllowed = [this] { return allowed; }}};
};

} // namespace

TEST_F(ClipboardHistoryTest, RecordsACopyUnlessItEqualsTheNewestClip) {
    start();
    for (const auto* text : {"a", "a", "b", "a"})
        copy(text);
    EXPECT_EQ(clips(), "a b a ");
    allowed = false;
    copy("c");
    EXPECT_EQ(clips(), "a b a ");

    allowed = true;
    preferences.set("memoryExcludedApps", std::string("org.example"));
    test::settle();
    EXPECT_EQ(clipboard.excluded, "org.example");
    workspace.post(notification::screensDidSleep);
    EXPECT_FALSE(clipboard.copied);
    workspace.post(notification::screensDidWake);
    EXPECT_TRUE(clipboard.copied);
    preferences.set("memoryClipboard", false);
    test::settle();
    EXPECT_FALSE(clipboard.copied);
    EXPECT_EQ(history.status(), "Clipboard history off");
}

TEST_F(ClipboardHistoryTest, StatusSaysWhatIsMissing) {
    start();
    const std::pair<ClipboardAccess, std::string> cases[] = {
        {{.absence = "No session."}, "No session."},
        {{.hasWriter = true, .hasFrontmost = true}, "Recording copied items"},
        {{.hasFrontmost = true},
         "Recording copied items. The application in front is taken for the one that copied, since "
         "this desktop does not report which one did."},
        {{},
         "Recording copied items. This desktop does not report which application copied, so the "
         "list of excluded applications has no effect."},
    };
    for (const auto& [access, expected] : cases) {
        clipboard.accessChanged(access);
        EXPECT_EQ(history.status(), expected);
        EXPECT_EQ(history.absence(), access.absence);
    }
    service.stop();
    EXPECT_EQ(history.status(), "Observation paused");
}

TEST_F(ClipboardHistoryTest, RemovesOldClipsWhileNothingIsCopied) {
    start();
    copy("old");
    clock.advance(100);
    copy("new");
    service.setClipboardDays(1);
    clock.advance(86'400 - 110);
    EXPECT_EQ(clips(), "new old ");
    clock.advance(90);
    EXPECT_EQ(clips(), "new ");
    history.copyAgain(*service.clips().at(0));
    ASSERT_FALSE(clipboard.contents.empty());
    EXPECT_EQ(clipboard.contents[0].bytes, "new");
}
