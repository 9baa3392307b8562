#include "platform/linux/ApplicationInstances.h"
#include "platform/linux/ApplicationUnit.h"
#include "platform/linux/DesktopApplications.h"
#include "platform/linux/UnitApplications.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/platform/PrivateBus.h"
#include "tests/platform/UserManager.h"

#include <QDBusObjectPath>
#include <QTimer>
#include <memory>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

const QString manager = u"org.freedesktop.systemd1.Manager"_s;
const QString managerPath = u"/org/freedesktop/systemd1"_s;
const QString unitInterface = u"org.freedesktop.systemd1.Unit"_s;

std::string entryOf(const std::string& name, const std::string& more = "") {
    return "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=/bin/sleep %U\n" + more;
}

std::string textOf(const ApplicationSource::Change& change) {
    const bool isLaunch = change.kind == ApplicationSource::Change::Kind::launched;
    return (isLaunch ? "+" : "-") + change.application.name + " ";
}

/// The adapter with desktop entries of its own.
struct UnitApplicationsTest : testing::Test {
    void SetUp() override {
        for (const char* name : {"org.example.Editor", "org.example.Player", "two-words"})
            folder.write(std::string(name) + ".desktop", entryOf(name));
    }
    ~UnitApplicationsTest() override {
        source.reset();
        clock.advance(1000);
    }

    void start() {
        source = std::make_unique<UnitApplications>(UnitApplications::Setup{
            .bus = [connection = bus] { return MessageBus(connection); },
            .clock = clock,
            .folders = [path = folder.path()] { return std::vector{path}; }});
        follow();
    }
    void follow() {
        source->start([this](const auto& change) { reported += textOf(change); });
    }
    void untilFollowing() {
        test::until([&] { return source->isFollowing(); });
    }
    /// Advances the clock again and again, so that launches settle.
    void expectReported(const std::string& expected) {
        QTimer time;
        time.callOnTimeout([&] { clock.advance(1); });
        time.start(5);
        test::until([&] { return reported.size() >= expected.size(); });
        EXPECT_EQ(std::exchange(reported, {}), expected);
    }

    const test::TemporaryFolder folder;
    test::PrivateBus home;
    QDBusConnection bus = home.connect(u"applications"_s);
    test::ManualAppClock clock;
    std::string reported;
    std::unique_ptr<UnitApplications> source;
};

/// With a mock of the service manager, for what the real one can't be made to do.
struct MockedUnits : UnitApplicationsTest {
    test::MockService systemd{home, bus, u"systemd"_s, u"org.freedesktop.systemd1"_s};

    void startManager() {
        systemd.start();
        const auto answer = [&](const QString& method, const QString& in, const QString& out,
                                const QString& code) {
            systemd.control(managerPath, u"AddMethod"_s, {manager, method, in, out, code});
        };
        answer(u"Subscribe"_s, u""_s, u""_s, u""_s);
        answer(u"ListUnitsByPatterns"_s, u"asas"_s, u"a(ssssssouso)"_s,
               u"ret = [(n, '', 'loaded', '', '', '', dbus.ObjectPath(p), 0, '', "
               u"dbus.ObjectPath('/')) for n, p in self.units.items()]"_s);
    }
    static QString pathOf(const QString& unit) {
        QString name = unit;
        return u"/org/freedesktop/systemd1/unit/"_s
               + name.replace(QLatin1Char('.'), QLatin1Char('_'))
                     .replace(QLatin1Char('-'), QLatin1Char('_'));
    }
    void emitSignal(const QString& signal, const QString& unit) {
        systemd.control(
            managerPath, u"EmitSignal"_s,
            {manager, signal, u"so"_s,
             QVariant(QVariantList{unit, QVariant::fromValue(QDBusObjectPath(pathOf(unit)))})});
    }
    void add(const QString& unit, const QString& state) {
        systemd.control(managerPath, u"AddMockUnit"_s, {unit});
        setState(unit, state);
        emitSignal(u"UnitNew"_s, unit);
    }
    void setState(const QString& unit, const QString& state) {
        systemd.control(pathOf(unit), u"UpdateProperties"_s,
                        {unitInterface, QVariantMap{{u"ActiveState"_s, state}}});
    }
};

} // namespace

TEST(ApplicationUnit, NamesApplications) {
    const struct {
        const char* name;
        std::string identifiers;
        bool isAutostart = false;
    } cases[] = {
        {"app-gnome-org.gnome.Terminal-92502.scope",
         "gnome-org.gnome.Terminal org.gnome.Terminal "},
        {R"(app-gnome-org.gnome.Foo\x2dBar-4711.scope)",
         "gnome-org.gnome.Foo-Bar org.gnome.Foo-Bar "},
        {"app-org.kde.kate-0123456789abcdef.scope", "org.kde.kate "},
        {"app-flatpak-org.example.App-123.scope", "flatpak-org.example.App org.example.App "},
        {"app-org.kde.kate@abcdef0123.service", "org.kde.kate "},
        {"app-org.kde.kate.service", "org.kde.kate "},
        {"app-org.kde.kdeconnect.daemon@autostart.service", "org.kde.kdeconnect.daemon ", true},
        {"app-foo-autostart.service", "foo ", true},
        {"dbus-:1.2-org.gnome.Nautilus@0.service", "org.gnome.Nautilus "},
        {"snap.firefox.firefox-01234567-89ab-cdef-0123-456789abcdef.scope", "firefox_firefox "},
        {"app-.scope", ""},
        {"app-x.scope", ""},
        {"app-@autostart.service", "", false},
        {"dbus-:1.2-@0.service", ""},
        {"snap.x-01234567-89ab-cdef-0123-456789abcdef.scope", ""},
        {"app-app\\x2dorg.kde.kate.slice", ""},
        {"pipewire.service", ""},
        {"", ""},
    };
    for (const auto& [name, identifiers, isAutostart] : cases) {
        const auto unit = ApplicationUnit::parse(name);
        std::string all;
        for (const auto& identifier : unit.value_or(ApplicationUnit{}).identifiers)
            all += identifier + " ";
        EXPECT_EQ(all, identifiers) << name;
        EXPECT_EQ(unit && unit->isAutostart, isAutostart) << name;
    }
}

TEST(DesktopApplications, AreThoseWithAWindow) {
    const test::TemporaryFolder folder;
    const std::vector<fs::path> folders{folder / "own", folder / "shared"};
    folder.write("shared/org.example.Editor.desktop", entryOf("Editor"));
    folder.write("shared/folder/Player.desktop", entryOf("Player", "Exec=flatpak run Player\n"));
    folder.write("shared/top.desktop", entryOf("Top", "Terminal=true\n"));
    folder.write("shared/part.desktop", entryOf("Part", "NoDisplay=true\n"));
    folder.write("own/gone.desktop", entryOf("Gone", "Hidden=true\n"));
    folder.write("shared/gone.desktop", entryOf("Gone"));
    folder.write("shared/damaged.desktop", "[Desktop Entry\n");
    const auto find = [&](std::vector<std::string> identifiers) {
        const auto found = desktopApplications::find(identifiers, folders);
        return found ? found->id + " " + found->name + " " + found->path : "";
    };
    EXPECT_EQ(find({"gnome-org.example.Editor", "org.example.Editor"}),
              "org.example.Editor Editor /bin/sleep");
    EXPECT_EQ(find({"folder-Player"}),
              "folder-Player Player " + (folder / "shared/folder/Player.desktop").native());
    for (const char* none :
         {"top", "part", "gone", "damaged", "unknown", "", "../own/gone", "/etc/passwd"})
        EXPECT_EQ(find({none}), "") << none;
}

TEST(ApplicationInstances, AreCountedByApplication) {
    const ApplicationSource::Application editor{"editor", "Editor", "/bin/editor"};
    const ApplicationSource::Application player{"player", "Player", "/bin/player"};
    ApplicationInstances instances;
    const auto settled = [&](double now) {
        std::string text;
        for (const auto& change : instances.settled(now))
            text += textOf(change);
        return text;
    };
    const auto removed = [&](const std::string& instance) {
        const auto change = instances.remove(instance, Date{9});
        return change ? textOf(*change) : "";
    };
    instances.assume("old", editor);
    instances.add("second", editor, Date{0}, 0);
    EXPECT_EQ(instances.nextSettling(), std::nullopt) << "it runs already";
    EXPECT_EQ(removed("old") + removed("unknown"), "");
    EXPECT_EQ(removed("second"), "-Editor ");

    instances.add("a", player, Date{1}, 10);
    instances.add("b", editor, Date{0}, 10.5);
    EXPECT_EQ(instances.nextSettling(), 12);
    EXPECT_EQ(settled(11.9), "");
    EXPECT_EQ(settled(13), "+Editor +Player ") << "in the order in which they began";
    instances.add("c", player, Date{2}, 14);
    EXPECT_EQ(removed("a"), "");
    EXPECT_EQ(removed("c"), "-Player ");
    instances.add("short", player, Date{3}, 15);
    EXPECT_EQ(removed("short"), "") << "the second start of a program that allows one";
    EXPECT_EQ(settled(99), "");
}

TEST_F(UnitApplicationsTest, FollowARealServiceManager) {
    if (const auto absence = test::UserManager::absence())
        GTEST_SKIP() << *absence;
    test::UserManager real;
    bus = real.connect();
    start();
    untilFollowing();
    real.run(
        "systemd-run --user --scope --quiet --unit=app-gnome-org.example.Editor-1.scope sleep 600");
    expectReported("+org.example.Editor ");
    real.run("systemd-run --user --quiet --unit=app-org.example.Player@1.service sleep 600");
    expectReported("+org.example.Player ");
    real.run("systemd-run --user --quiet --unit=app-org.example.Unknown@1.service sleep 600");
    // A second instance, then the end of both.
    real.run(R"(systemd-run --user --quiet --unit='app-two\x2dwords@1.service' sleep 600)");
    expectReported("+two-words ");
    real.run("systemctl --user stop app-org.example.Player@1.service");
    expectReported("-org.example.Player ");
    real.run("systemctl --user kill --signal=KILL app-gnome-org.example.Editor-1.scope");
    expectReported("-org.example.Editor ");
}

TEST_F(MockedUnits, CountOnlyUnitsThatBecomeActive) {
    startManager();
    systemd.control(managerPath, u"AddMockUnit"_s, {u"app-org.example.Editor-1.scope"_s});
    setState(u"app-org.example.Editor-1.scope"_s, u"active"_s);
    start();
    untilFollowing();
    // It ran before, so it is not launched; asking for a unit makes it known without running it.
    add(u"app-org.example.Player.service"_s, u"inactive"_s);
    add(u"app-two-words-autostart.service"_s, u"active"_s);
    add(u"app-org.example.Unknown.service"_s, u"active"_s);
    setState(u"app-org.example.Player.service"_s, u"activating"_s);
    setState(u"app-org.example.Player.service"_s, u"active"_s);
    expectReported("+org.example.Player ");
    setState(u"app-org.example.Player.service"_s, u"failed"_s);
    expectReported("-org.example.Player ");
    emitSignal(u"UnitRemoved"_s, u"app-two-words-autostart.service"_s);
    emitSignal(u"UnitRemoved"_s, u"app-org.example.Editor-1.scope"_s);
    expectReported("-two-words -org.example.Editor ");
}

TEST_F(MockedUnits, StartAnewWithTheServiceAndTheCollector) {
    start();
    for (int i = 0; i < 2; ++i) {
        startManager();
        untilFollowing();
        add(u"app-org.example.Editor-1.scope"_s, u"active"_s);
        expectReported("+org.example.Editor ");
        systemd.stop();
        test::until([&] { return !source->isFollowing(); });
    }
    startManager();
    add(u"app-org.example.Editor-1.scope"_s, u"active"_s);
    untilFollowing();
    source->stop();
    emitSignal(u"UnitRemoved"_s, u"app-org.example.Editor-1.scope"_s);
    follow();
    untilFollowing();
    add(u"app-org.example.Player.service"_s, u"active"_s);
    expectReported("+org.example.Player ");
}

TEST_F(MockedUnits, IgnoreOtherSendersAndFloods) {
    startManager();
    start();
    untilFollowing();
    const auto stranger = home.connect(u"stranger"_s);
    add(u"app-org.example.Editor-1.scope"_s, u"active"_s);
    expectReported("+org.example.Editor ");
    auto forged = QDBusMessage::createSignal(managerPath, manager, u"UnitRemoved"_s);
    forged << u"app-org.example.Editor-1.scope"_s
           << QVariant::fromValue(QDBusObjectPath(pathOf(u"app-org.example.Editor-1.scope"_s)));
    for (int i = 0; i < 1'000; ++i)
        ASSERT_TRUE(stranger.send(forged));
    for (int i = 0; i < 500; ++i)
        emitSignal(u"UnitNew"_s, u"app-org.example.Nothing%1.service"_s.arg(i));
    add(u"app-org.example.Player.service"_s, u"active"_s);
    expectReported("+org.example.Player ");
}
