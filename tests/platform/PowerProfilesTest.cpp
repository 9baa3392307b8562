#include "platform/linux/PowerProfiles.h"

#include "tests/app/support/Await.h"
#include "tests/platform/PowerMachine.h"

#include <QDBusVariant>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

const QString oldName = u"net.hadess.PowerProfiles"_s;
const QString oldPath = u"/net/hadess/PowerProfiles"_s;
const QString newName = u"org.freedesktop.UPower.PowerProfiles"_s;
const QString newPath = u"/org/freedesktop/UPower/PowerProfiles"_s;

struct PowerProfilesTest : testing::Test {
    test::PrivateBus home;
    QDBusConnection bus = home.connect(u"tested"_s);
    int changes = 0;
    std::optional<PowerProfiles> profiles;

    void follow() {
        profiles.emplace(bus, [this] { ++changes; });
    }
    void expect(std::optional<bool> isOn) {
        test::until([&] { return profiles->isOn() == isOn; });
        EXPECT_EQ(profiles->isOn(), isOn);
    }
    /// Chooses a profile, as the user does in the settings of the desktop.
    void choose(const QString& name, const QString& path, const QString& profile) {
        auto call = QDBusMessage::createMethodCall(name, path, u"org.freedesktop.DBus.Properties"_s,
                                                   u"Set"_s);
        call << name << u"ActiveProfile"_s << QVariant::fromValue(QDBusVariant(profile));
        const auto reply = bus.call(call);
        ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << qPrintable(reply.errorMessage());
    }
};

} // namespace

TEST_F(PowerProfilesTest, FollowsTheRealDaemonAndNeverStartsIt) {
    if (const auto missing = test::PowerMachine::missing(); !missing.empty())
        GTEST_SKIP() << missing;
    // The daemon asks polkit whether the user may change the profile.
    test::MockService polkit{home, bus, u"polkitd"_s, u"org.freedesktop.PolicyKit1"_s};
    polkit.start();
    polkit.control(u"/org/freedesktop/PolicyKit1/Authority"_s, u"AllowUnknown"_s, {true});
    test::PowerMachine machine(home);
    follow();
    test::settle();
    EXPECT_EQ(profiles->isOn(), std::nullopt);
    machine.carryOut("start power-profiles-daemon");
    expect(false);
    choose(oldName, oldPath, u"power-saver"_s);
    expect(true);
    machine.carryOut("kill power-profiles-daemon");
    expect(std::nullopt);
    // It starts with the profile that was chosen last.
    machine.carryOut("start power-profiles-daemon");
    expect(true);
    choose(oldName, oldPath, u"balanced"_s);
    expect(false);
}

TEST_F(PowerProfilesTest, CountsADaemonWithTwoNamesOnce) {
    // Each name has a mock of its own, because the template has the old name only.
    test::MockService old{home, bus, u"power_profiles_daemon"_s, oldName};
    old.start();
    follow();
    expect(false);
    test::MockService renamed{home, bus, test::MockService::Bare{newPath}, newName};
    renamed.start();
    renamed.control(newPath, u"AddProperties"_s,
                    {newName, QVariantMap{{u"ActiveProfile"_s, u"power-saver"_s},
                                          {u"PerformanceDegraded"_s, u""_s}}});
    renamed.control(newPath, u"UpdateProperties"_s,
                    {newName, QVariantMap{{u"ActiveProfile"_s, u"power-saver"_s}}});
    expect(true);
    EXPECT_FALSE(profiles->isTooHot());
    changes = 0;
    // The old name is not read while the new one is there.
    choose(oldName, oldPath, u"performance"_s);
    renamed.control(
        newPath, u"UpdateProperties"_s,
        {newName, QVariantMap{{u"PerformanceDegraded"_s, u"high-operating-temperature"_s}}});
    test::until([&] { return profiles->isTooHot(); });
    EXPECT_EQ(profiles->isOn(), true);
    EXPECT_EQ(changes, 1);
    renamed.stop();
    expect(false);
}
