#include "app/base/MainThreadCalls.h"
#include "core/memory/ClipRules.h"
#include "platform/linux/DataControl.h"
#include "platform/linux/SessionClipboard.h"
#include "platform/linux/SessionDisplays.h"
#include "tests/app/support/Await.h"
#include "tests/platform/DisplayServers.h"
#include "tests/platform/LaunchesByWindows.h"
#include "tests/support/Terminal.h"

#include <atomic>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

/// A program with a window that has this application identifier.
struct NamedWindow : test::ChildProgram {
    NamedWindow(const test::WaylandServer& server, const QString& id) {
        server.prepare(*this);
        process.setStandardErrorFile(QProcess::nullDevice());
        start({u"foot"_s, u"--app-id="_s + id, u"sleep"_s, u"600"_s});
    }
};

/// A program that owns the clipboard and logs what it is asked for.
class LoggedOffer {
public:
    LoggedOffer(WaylandConnection& connection, const std::vector<std::string>& types)
        : manager(dataControl::bindManager(connection)), seat(dataControl::bindSeat(connection)),
          device(dataControl::getDevice(manager, seat.as<wl_seat>())),
          source(dataControl::createSource(manager)) {
        static constexpr dataControl::DeviceListener deviceListener{
            .dataOffer =
                [](void*, wl_proxy*, wl_proxy* offer) {
                    WaylandObject(offer, dataControl::offerRequest::destroy).reset();
                },
            .selection = [](void*, wl_proxy*, wl_proxy*) {},
            .finished = [](void*, wl_proxy*) {},
            .primarySelection = [](void*, wl_proxy*, wl_proxy*) {},
        };
        static constexpr dataControl::SourceListener sourceListener{
            .send =
                [](void* self, wl_proxy*, const char* type, int pipe) {
                    ::close(pipe);
                    static_cast<LoggedOffer*>(self)->asked += std::string(type) + " ";
                },
            .cancelled = [](void*, wl_proxy*) {},
        };
        listen(device.get(), deviceListener);
        listen(source.get(), sourceListener);
        const auto version = wl_proxy_get_version(source.get());
        for (const auto& type : types)
            wl_proxy_marshal_flags(source.get(), dataControl::sourceRequest::offer, nullptr,
                                   version, 0, type.c_str());
        wl_proxy_marshal_flags(device.get(), dataControl::deviceRequest::setSelection, nullptr,
                               version, 0, source.get());
        connection.finishRequests();
    }

    std::string asked;

private:
    template <class Listener>
    void listen(wl_proxy* object, const Listener& listener) {
        wl_proxy_add_listener(
            object, reinterpret_cast<void (**)()>(const_cast<Listener*>(&listener)), this);
    }

    const WaylandObject manager;
    const WaylandObject seat;
    const WaylandObject device;
    const WaylandObject source;
};

struct WaylandSessionTest : testing::Test {
    void SetUp() override {
        if (!test::hasPrograms({"sway", "swaymsg", "wl-copy", "wl-paste", "setpriv"}))
            GTEST_SKIP() << "sway, wl-clipboard or setpriv is not installed";
        server.emplace();
        sessions = std::make_shared<GraphicalSessions>(
            GraphicalSessions::Addresses{.wayland = server->display(), .x11 = {}},
            std::vector<std::filesystem::path>());
    }

    void watch(const std::string& excluded = {}) {
        access.reset();
        clipboard.emplace(sessions, [this] { return seconds.load(); });
        clipboard->watch(
            excluded,
            [this](const CopiedItem& item) {
                const auto record = clipRules::record(item, Date{});
                log += record.value().title + " ";
                frontmost = item.origin.frontmost;
            },
            [this](const ClipboardAccess& now) { access = now; });
        test::until([&] { return access.has_value(); });
    }
    void untilLogged(const std::string& end) {
        test::until([&] { return log.ends_with(end + " "); });
    }
    /// Copies until the clipboard knows an application in front.
    void untilAWindowIsInFront() {
        for (int round = 0; !frontmost; ++round) {
            ASSERT_LT(round, 1'000) << "no window came to the front";
            const auto number = std::to_string(log.size());
            copy(QByteArray::fromStdString(number));
            untilLogged(number);
        }
    }
    /// Copies an item of these types, waits until the clipboard has handled that, and returns the
    /// types whose contents it asked for.
    std::string askedOf(const std::vector<std::string>& types) const {
        const auto other = WaylandConnection::open(server->display(), [] {});
        const LoggedOffer offer(*other, types);
        const MainThreadCalls calls;
        bool isHandled = false;
        const auto ask = [&, post = calls.post()](WaylandConnection& connection) {
            connection.finishRequests();
            post([&] { isHandled = true; });
            return std::unique_ptr<DisplayReader>();
        };
        const auto reader = sessions->wayland()->add({ask, [] {}});
        test::until([&] { return isHandled; });
        other->finishRequests();
        return offer.asked;
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
    std::optional<ClipApplication> frontmost;
    /// The time of the clipboard.
    std::atomic<double> seconds = 100;
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

TEST_F(WaylandSessionTest, DoesNotReadMarkedItemsNorTheItemAfterOne) {
    const std::string text = "text/plain;charset=utf-8";
    watch();
    EXPECT_EQ(askedOf({text}), text + " ");
    for (const auto* mark : {"x-kde-passwordManagerHint", "text/x-kde-passwordManagerHint"}) {
        EXPECT_EQ(askedOf({mark, text}), "");
        EXPECT_EQ(askedOf({text}), "") << "published again at once";
        seconds = seconds + 3;
        EXPECT_EQ(askedOf({text}), text + " ");
        EXPECT_EQ(askedOf({text, mark}), "");
        seconds = seconds + 1000;
        EXPECT_EQ(askedOf({text}), "") << "it is unknown who publishes it";
    }
}

TEST_F(WaylandSessionTest, DoesNotReadItemsWhileAnExcludedApplicationIsInFront) {
    if (!test::hasPrograms({"foot"}) || !test::hasTerminals())
        GTEST_SKIP() << "foot is not installed or finds no terminals";
    NamedWindow vault(*server, u"org.example.Vault"_s);
    watch();
    untilAWindowIsInFront();
    EXPECT_EQ(frontmost, (ClipApplication{"org.example.Vault", "org.example.Vault"}));
    watch("another, org.example.Vault");
    EXPECT_EQ(askedOf({"text/plain"}), "");
    vault.stop();
    watch("org.example.Vault");
    copy("honest");
    untilLogged("honest");
    EXPECT_EQ(frontmost, std::nullopt);
}

TEST_F(WaylandSessionTest, ReportsLaunchesAndQuitsByWindows) {
    if (!test::hasPrograms({"foot"}) || !test::hasTerminals())
        GTEST_SKIP() << "foot is not installed or finds no terminals";
    const test::TemporaryFolder entries;
    test::writeEntries(entries, {"Editor", "Player", "Viewer"});
    NamedWindow editor(*server, u"Editor"_s);
    watch();
    untilAWindowIsInFront();

    test::LaunchesByWindows launches(WindowApplications::Server::wayland, sessions, entries);
    NamedWindow player(*server, u"Player"_s);
    launches.expect("+Player ");
    const NamedWindow unknown(*server, u"Unknown"_s);
    const NamedWindow viewer(*server, u"Viewer"_s);
    launches.expect("+Viewer ");
    editor.stop();
    launches.expect("-Editor ");
    NamedWindow second(*server, u"Player"_s);
    player.stop();
    second.stop();
    launches.expect("-Player ");
    // The end of the compositor does not mean that the programs have ended.
    server.reset();
    test::until([&] { return !launches.windows.isFollowing(); });
    launches.clock.advance(10);
    EXPECT_EQ(launches.reported, "");
}

TEST_F(WaylandSessionTest, ServesTheClipsThatAreCopiedAgain) {
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
