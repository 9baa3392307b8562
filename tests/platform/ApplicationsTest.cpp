#include "platform/linux/ApplicationInstances.h"
#include "platform/linux/ApplicationLaunches.h"
#include "platform/linux/ApplicationUnit.h"
#include "platform/linux/DesktopApplications.h"
#include "platform/linux/UnitApplications.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/platform/PrivateBus.h"
#include "tests/platform/UserManager.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QTimer>
#include <algorithm>
#include <map>
#include <memory>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

const QString serviceName = u"org.freedesktop.systemd1"_s;
const QString unitsInterface = u"org.freedesktop.systemd1.Manager"_s;
const QString unitsPath = u"/org/freedesktop/systemd1"_s;
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
        auto made = std::make_unique<UnitApplications>(UnitApplications::Setup{
            .bus = [connection = bus] { return MessageBus(connection); },
            .clock = clock,
            .folders = [path = folder.path()] { return std::vector{path}; }});
        units = &*made;
        std::vector<std::unique_ptr<ApplicationLaunches::Source>> sources;
        sources.push_back(std::move(made));
        source = std::make_unique<ApplicationLaunches>(std::move(sources), clock);
        follow();
    }
    void follow() {
        source->start([this](const auto& change) { reported += textOf(change); });
    }
    void untilFollowing() {
        test::until([&] { return units->isFollowing(); });
    }
    /// Waits for these changes, while it advances the clock, so that launches settle.
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
    std::unique_ptr<ApplicationLaunches> source;
    UnitApplications* units = nullptr;
};

/// One unit in the reply to `ListUnitsByPatterns`.
struct ListedUnit {
    QString name;
    /// A valid path by default: the registration of the type writes a default-constructed value.
    QString path = u"/"_s;
};

QDBusArgument& operator<<(QDBusArgument& argument, const ListedUnit& unit) {
    argument.beginStructure();
    argument << unit.name << QString() << QString() << QString() << QString() << QString()
             << QDBusObjectPath(unit.path) << quint32{0} << QString() << QDBusObjectPath(u"/"_s);
    argument.endStructure();
    return argument;
}

/// Only for the registration of the type.
const QDBusArgument& operator>>(const QDBusArgument& argument, ListedUnit&) {
    // In the form that Qt requires. NOLINTNEXTLINE(bugprone-return-const-ref-from-parameter)
    return argument;
}

/// A service manager in this process, for what the real one can't be made to do.
class FakeManager final : public QDBusVirtualObject {
public:
    explicit FakeManager(QDBusConnection connection) : bus(std::move(connection)) {
        qDBusRegisterMetaType<ListedUnit>();
        qDBusRegisterMetaType<QList<ListedUnit>>();
        bus.registerVirtualObject(unitsPath, this, QDBusConnection::SubPath);
    }

    void start() { ASSERT_TRUE(bus.registerService(serviceName)); }
    void stop() {
        states.clear();
        bus.unregisterService(serviceName);
    }
    void add(const QString& unit, const QString& state) {
        states[unit] = state;
        emitSignal(u"UnitNew"_s, unit);
    }
    void setState(const QString& unit, const QString& state) {
        states[unit] = state;
        auto signal = QDBusMessage::createSignal(pathOf(unit), u"org.freedesktop.DBus.Properties"_s,
                                                 u"PropertiesChanged"_s);
        signal << unitInterface << QVariantMap{{u"ActiveState"_s, state}} << QStringList();
        bus.send(signal);
    }
    void remove(const QString& unit) {
        states.erase(unit);
        emitSignal(u"UnitRemoved"_s, unit);
    }
    void emitSignal(const QString& name, const QString& unit) const { emitSignal(bus, name, unit); }
    static void emitSignal(const QDBusConnection& sender, const QString& name,
                           const QString& unit) {
        auto signal = QDBusMessage::createSignal(unitsPath, unitsInterface, name);
        signal << unit << QVariant::fromValue(QDBusObjectPath(pathOf(unit)));
        sender.send(signal);
    }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override {
        auto reply = call.createReply();
        if (call.member() == u"ListUnitsByPatterns"_s) {
            QList<ListedUnit> units;
            for (const auto& [name, state] : states)
                units.append({name, pathOf(name)});
            reply << QVariant::fromValue(units);
        } else if (call.member() == u"Get"_s) {
            const auto unit = std::ranges::find_if(
                states, [&](const auto& known) { return pathOf(known.first) == call.path(); });
            if (unit == states.end())
                reply = call.createErrorReply(QDBusError::UnknownObject, u"no such unit"_s);
            else
                reply << QVariant::fromValue(QDBusVariant(unit->second));
        }
        return connection.send(reply);
    }
    QString introspect(const QString&) const override { return {}; }

private:
    static QString pathOf(const QString& unit) {
        return unitsPath + u"/unit/"_s + QString::fromLatin1(unit.toLatin1().toHex());
    }

    QDBusConnection bus;
    /// The state of each unit.
    std::map<QString, QString> states;
};

struct MockedUnits : UnitApplicationsTest {
    FakeManager systemd{home.connect(u"manager"_s)};
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

TEST(DesktopApplications, AreNeitherHiddenNorForATerminal) {
    const test::TemporaryFolder folder;
    const std::vector<fs::path> folders{folder / "own", folder / "shared"};
    folder.write("shared/org.example.Editor.desktop", entryOf("Editor"));
    folder.write("shared/folder/Player.desktop", entryOf("Player", "Exec=flatpak run Player\n"));
    folder.write("shared/my-folder/inner/My-Kit.desktop", entryOf("Kit", "Exec=flatpak run Kit\n"));
    folder.write("outside.desktop", entryOf("Outside"));
    folder.write("shared/top.desktop", entryOf("Top", "Terminal=true\n"));
    folder.write("shared/old.desktop", entryOf("Old", "Terminal=1\n"));
    folder.write("shared/part.desktop", entryOf("Part", "NoDisplay=true\n"));
    folder.write("own/gone.desktop", entryOf("Gone", "Hidden=true\n"));
    folder.write("shared/gone.desktop", entryOf("Gone"));
    folder.write("shared/damaged.desktop", "[Desktop Entry\n");
    const auto find = [&](const std::vector<std::string>& identifiers) {
        const auto found = desktopApplications::find(identifiers, folders);
        return found ? found->id + " " + found->name + " " + found->path : "";
    };
    EXPECT_EQ(find({"gnome-org.example.Editor", "org.example.Editor"}),
              "org.example.Editor Editor /bin/sleep");
    EXPECT_EQ(find({"folder-Player"}),
              "folder-Player Player " + (folder / "shared/folder/Player.desktop").native());
    EXPECT_EQ(find({"my-folder-inner-My-Kit"}),
              "my-folder-inner-My-Kit Kit "
                  + (folder / "shared/my-folder/inner/My-Kit.desktop").native());
    for (const char* none : {"top", "old", "part", "gone", "damaged", "unknown", "", "../own/gone",
                             "..-outside", "/etc/passwd"})
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

    instances.assume("unit a", player);
    instances.assume("window a", player);
    instances.assume("unit b", editor);
    instances.forget("unit ");
    EXPECT_EQ(removed("unit a") + removed("unit b"), "") << "unknown, not ended";
    EXPECT_EQ(removed("window a"), "-Player ");
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
    // A third application, then the end of the first two.
    real.run(R"(systemd-run --user --quiet --unit='app-two\x2dwords@1.service' sleep 600)");
    expectReported("+two-words ");
    real.run("systemctl --user stop app-org.example.Player@1.service");
    expectReported("-org.example.Player ");
    real.run("systemctl --user kill --signal=KILL app-gnome-org.example.Editor-1.scope");
    expectReported("-org.example.Editor ");
}

TEST_F(MockedUnits, CountOnlyUnitsThatBecomeActive) {
    systemd.start();
    systemd.add(u"app-org.example.Editor-1.scope"_s, u"active"_s);
    systemd.add(u"app-org.example.Player@2.service"_s, u"inactive"_s);
    start();
    untilFollowing();
    systemd.setState(u"app-org.example.Player@2.service"_s, u"active"_s);
    expectReported("+org.example.Player ");
    systemd.remove(u"app-org.example.Player@2.service"_s);
    expectReported("-org.example.Player ");
    // Only the player is reported. It is known before it runs, as a unit is that somebody asked
    // for. The autostart unit was not launched by the user, and Unknown has no desktop entry.
    systemd.add(u"app-org.example.Player@1.service"_s, u"inactive"_s);
    systemd.add(u"app-two-words@autostart.service"_s, u"active"_s);
    systemd.add(u"app-org.example.Unknown@1.service"_s, u"active"_s);
    systemd.setState(u"app-org.example.Player@1.service"_s, u"activating"_s);
    systemd.setState(u"app-org.example.Player@1.service"_s, u"active"_s);
    expectReported("+org.example.Player ");
    systemd.setState(u"app-org.example.Player@1.service"_s, u"failed"_s);
    expectReported("-org.example.Player ");
    untilFollowing();
    systemd.remove(u"app-two-words@autostart.service"_s);
    systemd.remove(u"app-org.example.Editor-1.scope"_s);
    expectReported("-two-words -org.example.Editor ");
}

TEST_F(MockedUnits, FollowAgainAfterARestartOfTheServiceOrTheCollector) {
    start();
    for (int i = 0; i < 2; ++i) {
        systemd.start();
        untilFollowing();
        systemd.add(u"app-org.example.Editor-1.scope"_s, u"active"_s);
        expectReported("+org.example.Editor ");
        systemd.stop();
        test::until([&] { return !units->isFollowing(); });
    }
    systemd.add(u"app-org.example.Editor-1.scope"_s, u"active"_s);
    systemd.start();
    untilFollowing();
    source->stop();
    systemd.remove(u"app-org.example.Editor-1.scope"_s);
    follow();
    untilFollowing();
    systemd.add(u"app-org.example.Player@1.service"_s, u"active"_s);
    expectReported("+org.example.Player ");
}

TEST_F(MockedUnits, IgnoreOtherSendersAndFloods) {
    systemd.start();
    start();
    untilFollowing();
    const auto stranger = home.connect(u"stranger"_s);
    systemd.add(u"app-org.example.Editor-1.scope"_s, u"active"_s);
    expectReported("+org.example.Editor ");
    for (int i = 0; i < 1'000; ++i)
        FakeManager::emitSignal(stranger, u"UnitRemoved"_s, u"app-org.example.Editor-1.scope"_s);
    for (int i = 0; i < 1'000; ++i)
        systemd.emitSignal(u"UnitNew"_s, u"app-org.example.Nothing@%1.service"_s.arg(i));
    systemd.add(u"app-org.example.Player@1.service"_s, u"active"_s);
    expectReported("+org.example.Player ");
}
