#include "core/memory/ClipRules.h"
#include "platform/linux/SessionClipboard.h"
#include "platform/linux/SessionDisplays.h"
#include "tests/app/support/Await.h"
#include "tests/platform/DisplayServers.h"

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

struct WaylandSessionTest : testing::Test {
    void SetUp() override {
        if (!test::hasPrograms({"sway", "swaymsg", "wl-copy", "wl-paste", "setpriv"}))
            GTEST_SKIP() << "sway, wl-clipboard or setpriv is not installed";
        server.emplace();
        sessions = std::make_shared<GraphicalSessions>(
            GraphicalSessions::Addresses{.wayland = server->display(), .x11 = {}});
    }

    void watch() {
        access.reset();
        clipboard.emplace(sessions);
        clipboard->watch(
            {},
            [this](const CopiedItem& item) {
                const auto record = clipRules::record(item, Date{});
                log += record.value().title + " ";
            },
            [this](const ClipboardAccess& now) { access = now; });
        test::until([&] { return access.has_value(); });
    }
    void untilLogged(const std::string& end) {
        test::until([&] { return log.ends_with(end + " "); });
    }
    void copy(const QByteArray& bytes, const QString& type = u"text/plain;charset=utf-8"_s) const {
        server->run({u"wl-copy"_s, u"--type"_s, type}, bytes);
    }
    QByteArray paste(const QString& type = u"text/plain"_s) const {
        return server->run({u"wl-paste"_s, u"--no-newline"_s, u"--type"_s, type});
    }

    std::optional<test::WaylandServer> server;
    std::shared_ptr<GraphicalSessions> sessions;
    std::optional<SessionClipboard> clipboard;
    std::optional<ClipboardAccess> access;
    std::string log;
};

} // namespace

TEST_F(WaylandSessionTest, ReadsWhatOtherProgramsCopyButNothingMarked) {
    copy("old");
    watch();
    EXPECT_EQ(*access, (ClipboardAccess{.hasFrontmost = true}));
    copy("first");
    untilLogged("first");
    copy("file:///home/a%20b\r\n", u"text/uri-list"_s);
    untilLogged("a b");
    copy(QByteArray(900'000, 'p'), u"image/png"_s);
    untilLogged("Copied image");
    copy(QByteArray(3'000'000, 'x'));
    copy("after the large one");
    untilLogged("one");
    copy("secret", u"x-kde-passwordManagerHint"_s);
    copy("republished");
    watch();
    copy("last");
    untilLogged("last");
    EXPECT_EQ(log, "first a b Copied image after the large one last ");
    server.reset();
    test::until([&] { return !access->absence.empty(); });
}

TEST_F(WaylandSessionTest, ServesWhatItPutsBack) {
    watch();
    const std::string large(3'000'000, 'l');
    clipboard->put({{"image/png", large}, {"text/plain", "small"}});
    while (paste() != "small") {
    }
    EXPECT_EQ(paste(u"image/png"_s).toStdString(), large);
    clipboard->unwatch();
    clipboard->put({{"text/plain", "second"}});
    while (paste() != "second") {
    }
    watch();
    copy("of another program");
    untilLogged("program");
    EXPECT_EQ(log, "of another program ") << "what this program puts there is not recorded";
}

TEST_F(WaylandSessionTest, FollowsDisplays) {
    int changes = 0;
    std::optional<SessionDisplays> displays;
    displays.emplace([&] { ++changes; }, sessions);
    using Displays = std::vector<ObservedDisplay>;
    const auto until = [&](const auto& condition) {
        test::until([&] { return displays->displays() && condition(*displays->displays()); });
    };
    EXPECT_EQ(displays->displays(), std::nullopt);
    until([](const Displays& now) { return now.size() == 1 && now[0].mode; });
    EXPECT_TRUE(displays->displays()->at(0).key.starts_with("HEADLESS-1"));
    server->command(u"create_output"_s);
    until([](const Displays& now) { return now.size() == 2 && now[1].mode; });
    server->command(u"output HEADLESS-2 scale 2"_s);
    until([](const Displays& now) { return now[1].mode->scale == 2; });
    const auto mode = displays->displays()->at(1).mode;
    EXPECT_EQ(mode->logicalWidth * 2, mode->pixelWidth) << mode->label();
    EXPECT_FALSE(mode->builtIn);
    EXPECT_GE(changes, 3);
    server.reset();
    test::until([&] { return !displays->displays(); });
}
