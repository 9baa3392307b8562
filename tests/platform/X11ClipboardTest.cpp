#include "core/memory/ClipRules.h"
#include "core/memory/ClipTypes.h"
#include "platform/linux/SessionClipboard.h"
#include "platform/linux/X11OfferedItem.h"
#include "platform/linux/X11Windows.h"
#include "tests/app/support/Await.h"
#include "tests/platform/DisplayServers.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace tidemark;
using namespace Qt::StringLiterals;
using Part = ClipPart;

namespace {

/// A program that owns the selection and logs what it is asked for.
class LoggedOwner final : private X11Connection::Observer {
public:
    enum class Behaviour { refuses, isSilent, diesInTheMiddle };

    LoggedOwner(X11Connection& connection, Behaviour behaviour, std::vector<std::string> types)
        : Observer(connection), behaviour(behaviour), types(std::move(types)),
          window(connection.createWindow()) {
        xcb_set_selection_owner(connection.raw(), window, connection.atom("CLIPBOARD"),
                                XCB_CURRENT_TIME);
        xcb_flush(connection.raw());
    }

    std::string asked;
    bool isDead = false;

private:
    void handle(const xcb_generic_event_t& event) override {
        if ((event.response_type & 0x7F) != XCB_SELECTION_REQUEST)
            return;
        const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(event);
        // Display numbers are used again, so a recorder of another test may connect to this
        // display. Its requests don't count.
        if (request.owner != window || windows.processOf(request.requestor) != ::getpid())
            return;
        const auto name = connection.nameOf(request.target);
        asked += name + " ";
        if (behaviour == Behaviour::isSilent)
            return;
        if (name == "TARGETS") {
            std::vector<xcb_atom_t> atoms;
            for (const auto& type : types)
                atoms.push_back(connection.atom(type));
            write(request, XCB_ATOM_ATOM, atoms);
            return answer(request, request.property);
        }
        if (behaviour == Behaviour::refuses)
            return answer(request, XCB_ATOM_NONE);
        write(request, connection.atom("INCR"), {1'000'000});
        answer(request, request.property);
        xcb_destroy_window(connection.raw(), window);
        isDead = true;
    }
    void write(const xcb_selection_request_event_t& request, xcb_atom_t type,
               const std::vector<std::uint32_t>& numbers) const {
        xcb_change_property(connection.raw(), XCB_PROP_MODE_REPLACE, request.requestor,
                            request.property, type, 32, static_cast<std::uint32_t>(numbers.size()),
                            numbers.data());
    }
    void answer(const xcb_selection_request_event_t& request, xcb_atom_t property) const {
        xcb_selection_notify_event_t notice{};
        notice.response_type = XCB_SELECTION_NOTIFY;
        notice.requestor = request.requestor;
        notice.selection = request.selection;
        notice.target = request.target;
        notice.property = property;
        // xcb sends 32 bytes of an event, and this one is shorter.
        std::array<char, 32> bytes{};
        std::memcpy(bytes.data(), &notice, sizeof notice);
        xcb_send_event(connection.raw(), 0, request.requestor, 0, bytes.data());
    }

    const Behaviour behaviour;
    const std::vector<std::string> types;
    const xcb_window_t window;
    ApplicationFinder finder;
    X11Windows windows{connection, finder};
};

using Behaviour = LoggedOwner::Behaviour;

struct X11ClipboardTest : testing::Test {
    void SetUp() override {
        if (!test::hasPrograms({"Xvfb", "openbox", "xclip", "xdotool"}))
            GTEST_SKIP() << "Xvfb, openbox, xclip or xdotool is not installed";
        server.emplace();
        open();
    }
    ~X11ClipboardTest() override { clipboard.reset(); }

    void open(const std::vector<std::filesystem::path>& entries = {}) {
        sessions = std::make_shared<GraphicalSessions>(
            GraphicalSessions::Addresses{.x11 = server->display()}, entries);
        clipboard.emplace(sessions, [this] { return seconds.load(); });
    }
    void watch(const std::string& excluded = {}) {
        access.reset();
        clipboard->watch(
            excluded,
            [this](CopiedItem item) {
                const auto record = clipRules::record(item, Date{});
                log += record.value().title + " ";
                items.push_back(std::move(item));
            },
            [this](const ClipboardAccess& now) { access = now; });
        test::until([&] { return access.has_value(); });
    }
    void untilLogged(const std::string& end) {
        test::until([&] { return log.ends_with(end + " "); });
    }
    /// Returns when the copy is on the clipboard; xclip itself returns before.
    void copy(const QByteArray& text, const QString& type = u"UTF8_STRING"_s) const {
        const auto observer = connect();
        const auto before = owner(*observer);
        server->run({u"xclip"_s, u"-selection"_s, u"clipboard"_s, u"-t"_s, type}, text);
        while (owner(*observer) == before)
            QCoreApplication::processEvents();
    }
    static xcb_window_t owner(X11Connection& connection) {
        auto* raw = connection.raw();
        const XcbPointer<xcb_get_selection_owner_reply_t> reply{xcb_get_selection_owner_reply(
            raw, xcb_get_selection_owner(raw, connection.atom("CLIPBOARD")), nullptr)};
        return reply->owner;
    }
    QByteArray paste(const QString& type = u"UTF8_STRING"_s) const {
        return server->run({u"xclip"_s, u"-o"_s, u"-selection"_s, u"clipboard"_s, u"-t"_s, type});
    }
    /// Returns when all that happened on the server has been handled, by the clipboard and by the
    /// simulated program on the connection `other`.
    void finish(X11Connection& other) const {
        for (int round = 0; round < 3; ++round) {
            owner(other);
            // Handles the requests that arrived before the reply.
            other.settle();
            test::settleReaders(*sessions);
        }
    }
    /// Copies an item, and expects that the clipboard asks only for its types.
    void expectUnread(X11Connection& other,
                      std::vector<std::string> types = {"UTF8_STRING"}) const {
        const LoggedOwner item(other, LoggedOwner::Behaviour::refuses, std::move(types));
        test::until([&] { return !item.asked.empty(); });
        finish(other);
        // The targets are asked for twice when watching begins at that moment: once for the item
        // that is there, once for the change.
        EXPECT_TRUE(item.asked == "TARGETS " || item.asked == "TARGETS TARGETS ") << item.asked;
    }
    /// A connection of another program.
    std::unique_ptr<X11Connection> connect() const {
        return X11Connection::open(server->display(), [] {});
    }

    /// The time of the clipboard.
    std::atomic<double> seconds = 100;
    std::optional<test::X11Server> server;
    std::shared_ptr<GraphicalSessions> sessions;
    std::optional<SessionClipboard> clipboard;
    std::optional<ClipboardAccess> access;
    std::string log;
    std::vector<CopiedItem> items;
};

} // namespace

TEST_F(X11ClipboardTest, ReadsWhatOtherProgramsCopy) {
    copy("old");
    watch();
    EXPECT_EQ(*access, (ClipboardAccess{.hasWriter = true, .hasFrontmost = true}));
    const QByteArray picture(900'000, 'p');
    copy("first");
    untilLogged("first");
    copy("first");
    untilLogged("first first");
    copy("caf\xE9", u"STRING"_s);
    untilLogged("café");
    copy("# two\r\nfile:///home/a%20b\r\nfile:///c\r\n", u"text/uri-list"_s);
    untilLogged("a b");
    copy(picture, u"image/png"_s);
    untilLogged("Copied image");
    EXPECT_EQ(items.back().contents[Part::image].bytes, picture.toStdString());
    // The rest of what is too large is not read.
    std::string large;
    large.resize(30'000'000, 'x');
    SessionClipboard other(std::make_shared<GraphicalSessions>(
        GraphicalSessions::Addresses{.x11 = server->display()}));
    other.put({{"UTF8_STRING", "large"}, {"text/rtf", large}});
    untilLogged("large");
    EXPECT_LE(items.back().contents[Part::richText].bytes.size(), 1'100'000U);
    clipboard->unwatch();
    copy("unwatched");
    watch();
    copy("last");
    untilLogged("last");
    EXPECT_EQ(log, "first first café a b Copied image large last ");
    EXPECT_EQ(items.back().origin.writer, std::nullopt) << "xclip has ended its first process";
}

TEST_F(X11ClipboardTest, NeverReadsAMarkedItemNorItsRepublication) {
    const auto other = connect();
    const auto copyHonest = [&](const std::string& text) {
        copy(QByteArray::fromStdString(text));
        untilLogged(text);
    };
    for (const auto* mark : {"x-kde-passwordManagerHint", "text/x-kde-passwordManagerHint"}) {
        watch();
        expectUnread(*other, {"UTF8_STRING", mark});
        expectUnread(*other);
        seconds = seconds + MarkedClipGuard::keeperTime - 0.1;
        expectUnread(*other);
        seconds = seconds + 0.2;
        copyHonest("later");
        expectUnread(*other, {mark, "UTF8_STRING"});
        seconds = seconds + 1000;
        expectUnread(*other);
        copyHonest("after a program that is not known");
    }
    // A marked item that was copied before watching begins is not read either.
    LoggedOwner vault(*other, Behaviour::refuses, {"UTF8_STRING", "x-kde-passwordManagerHint"});
    watch();
    test::until([&] { return !vault.asked.empty(); });
    finish(*other);
    expectUnread(*other);
    EXPECT_EQ(vault.asked.find("UTF8_STRING"), std::string::npos);
    seconds = seconds + 3;
    copyHonest("honest");
}

TEST_F(X11ClipboardTest, DoesNotReadItemsOfExcludedApplications) {
    const test::TemporaryFolder entries;
    entries.write(
        "org.example.Vault.desktop",
        "[Desktop Entry]\nType=Application\nName=Vault\nExec=tidemark_platform_tests %f\n");
    open({entries.path()});
    watch("org.example.Vault");
    const auto other = connect();
    {
        const LoggedOwner vault(*other, Behaviour::refuses, {"UTF8_STRING"});
        finish(*other);
        EXPECT_EQ(vault.asked, "");
    }
    watch("org.other");
    finish(*other);
    SessionClipboard vault(std::make_shared<GraphicalSessions>(
        GraphicalSessions::Addresses{.x11 = server->display()}));
    vault.put({{"UTF8_STRING", "kept"}});
    untilLogged("kept");
    EXPECT_EQ(log, "kept ");
    EXPECT_EQ(items.at(0).origin.writer, (ClipApplication{"org.example.Vault", "Vault"}));
}

TEST_F(X11ClipboardTest, DoesNotReadItemsWhileAnExcludedApplicationIsInFront) {
    const auto other = connect();
    std::optional<test::X11Window> window;
    window.emplace(*server, std::vector<std::string>{"vault", "Vault"});
    server->run({u"xdotool"_s, u"search"_s, u"--sync"_s, u"--class"_s, u"Vault"_s,
                 u"windowactivate"_s, u"--sync"_s});
    watch("another");
    copy("before");
    untilLogged("before");
    EXPECT_EQ(items.back().origin.frontmost, (ClipApplication{"vault", "Vault"}));

    watch("another, vault");
    {
        const LoggedOwner secret(*other, Behaviour::refuses, {"UTF8_STRING"});
        finish(*other);
        EXPECT_EQ(secret.asked, "");
    }
    const test::X11Window editor(*server, {"editor", "Editor"});
    server->run({u"xdotool"_s, u"search"_s, u"--sync"_s, u"--class"_s, u"Editor"_s,
                 u"windowactivate"_s, u"--sync"_s});
    expectUnread(*other);
    seconds = seconds + 3;
    copy("honest");
    untilLogged("honest");
    EXPECT_EQ(items.back().origin.frontmost, (ClipApplication{"editor", "Editor"}));
    EXPECT_EQ(log, "before honest ");
}

TEST_F(X11ClipboardTest, IsNotDelayedByProgramsThatHangOrEnd) {
    watch();
    const auto other = connect();
    const LoggedOwner dying(*other, Behaviour::diesInTheMiddle, {"UTF8_STRING"});
    test::until([&] { return dying.isDead; });
    copy("after the dead one");
    untilLogged("one");

    const LoggedOwner silent(*other, Behaviour::isSilent, {});
    test::until([&] { return !silent.asked.empty(); });
    const auto begin = std::chrono::steady_clock::now();
    copy("while one is silent");
    untilLogged("silent");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, X11OfferedItem::answerTime);
}

TEST_F(X11ClipboardTest, ConnectsAgainWhenTheServerReturns) {
    watch();
    copy("before");
    untilLogged("before");
    const auto display = server->display();
    server.reset();
    test::until([&] { return !access->absence.empty(); });
    EXPECT_EQ(access->absence, "The clipboard can’t be watched: there is no graphical session.");
    server.emplace(display);
    test::until([&] { return access->absence.empty(); });
    copy("after");
    untilLogged("after");
    EXPECT_EQ(log, "before after ");
}

TEST_F(X11ClipboardTest, ServesTheClipsThatAreCopiedAgain) {
    watch();
    MemoryRecord image;
    image.payload = Data{std::string(3'000'000, 'i')};
    image.pasteboardType = "image/png";
    clipboard->put(clipTypes::offered(image));
    while (!paste(u"TARGETS"_s).contains("image/png")) {
    }
    {
        test::ChildProgram killed;
        server->prepare(killed);
        killed.start(
            {u"xclip"_s, u"-o"_s, u"-selection"_s, u"clipboard"_s, u"-t"_s, u"image/png"_s});
    }
    EXPECT_EQ(paste(u"image/png"_s).toStdString(), image.payload->bytes);
    EXPECT_EQ(paste(u"image/jpeg"_s), "");

    MemoryRecord text;
    text.text = std::string(clipRules::mostText, 't');
    text.payload = Data{std::string(900'000, 'r')};
    text.pasteboardType = "text/rtf";
    clipboard->put(clipTypes::offered(text));
    while (paste().toStdString() != text.text) {
    }
    EXPECT_EQ(paste(u"text/rtf"_s).toStdString(), text.payload->bytes);
    EXPECT_EQ(paste(u"STRING"_s).toStdString(), text.text);
    const auto targets = paste(u"TARGETS"_s);
    for (const auto* target : {"TARGETS", "MULTIPLE", "TIMESTAMP", "text/rtf", "UTF8_STRING"})
        EXPECT_TRUE(targets.contains(target)) << target;
    clipboard->unwatch();
    EXPECT_EQ(paste().size(), clipRules::mostText) << "kept when recording stops";
    watch();
    copy("of another program");
    untilLogged("program");
    EXPECT_EQ(paste(), "of another program");
    EXPECT_EQ(log, "of another program ") << "what this program puts there is not recorded";
}
