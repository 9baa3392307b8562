#include "platform/linux/AutostartItem.h"

#include "core/base/Error.h"
#include "tests/app/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>

#include <gtest/gtest.h>

using namespace tidemark;
using Status = LoginItem::Status;

namespace {

struct AutostartItemTest : testing::Test {
    void writeOwn(const std::string& keys) const {
        folder.write("own/app.tidemark.desktop", "[Desktop Entry]\nType=Application\n" + keys);
    }
    void writeShared(const std::string& keys) const {
        folder.write("shared/app.tidemark.desktop", "[Desktop Entry]\nType=Application\n" + keys);
    }

    const test::TemporaryFolder folder;
    AutostartItem item{{.own = folder / "own", .shared = {folder / "none", folder / "shared"}},
                       {"/bin/sleep", "10"}};
};

} // namespace

TEST_F(AutostartItemTest, ReadsWhatTheUserAndTheDesktopChose) {
    EXPECT_EQ(item.status(), Status::notRegistered);
    const std::pair<const char*, Status> cases[] = {
        {"Exec=sleep\n", Status::enabled},
        {"Exec=sleep\nTryExec=/bin/sleep\nX-GNOME-Autostart-enabled=true\n", Status::enabled},
        {"TryExec=sleep\n", Status::enabled},
        {"TryExec=/no/such/program\n", Status::notFound},
        {"TryExec=no-such-program\n", Status::notFound},
        {"Hidden=true\n", Status::requiresApproval},
        {"TryExec=/no/such/program\nX-GNOME-Autostart-enabled=false\n", Status::requiresApproval},
    };
    for (const auto& [keys, status] : cases) {
        writeOwn(keys);
        EXPECT_EQ(item.status(), status) << keys;
        std::filesystem::remove(folder / "own/app.tidemark.desktop");
        writeShared(keys);
        EXPECT_EQ(item.status(), status) << keys << "in the folder of the system";
        std::filesystem::remove(folder / "shared/app.tidemark.desktop");
    }
    folder.write("own/app.tidemark.desktop", "damaged");
    EXPECT_EQ(item.status(), Status::notRegistered);
}

TEST_F(AutostartItemTest, IsAddedAndRemoved) {
    item.add();
    EXPECT_EQ(item.status(), Status::enabled);
    EXPECT_EQ(test::contents(folder / "own/app.tidemark.desktop"),
              "[Desktop Entry]\nType=Application\nName=Tidemark\nExec=\"/bin/sleep\" \"10\"\n"
              "TryExec=/bin/sleep\nX-GNOME-Autostart-enabled=true\n");
    test::await(item.remove());
    EXPECT_EQ(test::namesIn(folder / "own"), "");
    test::await(item.remove());

    // What the desktop's settings turned off stays off.
    writeOwn("Exec=other\nHidden=true\n");
    item.add();
    EXPECT_EQ(item.status(), Status::requiresApproval);

    // An entry of the system can't be removed, only hidden.
    writeShared("Exec=sleep\n");
    test::await(item.remove());
    EXPECT_EQ(item.status(), Status::notRegistered);
    item.add();
    EXPECT_EQ(item.status(), Status::enabled);

    for (const char* name : {"own", "shared"})
        std::filesystem::remove_all(folder / name);
    folder.write("own", "not a folder");
    EXPECT_THROW(item.add(), Error);
}

TEST_F(AutostartItemTest, QuotesTheCommand) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"/a b/tidemark", "run"}, R"("/a b/tidemark" "run")"},
        {{R"(/a"b)"}, R"("/a\\"b")"},
        {{R"(/a\b$`)"}, R"("/a\\\\b\\$\\`")"},
        {{"/100%f"}, R"("/100%%f")"},
    };
    for (const auto& [command, line] : cases)
        EXPECT_EQ(AutostartItem::quoted(command), line);
    EXPECT_THROW(AutostartItem::quoted({"/a\nHidden=true"}), Error);
}
