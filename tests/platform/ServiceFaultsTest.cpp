#include "platform/linux/BluezMonitor.h"
#include "platform/linux/LogindMonitor.h"
#include "platform/linux/NetworkManagerMetered.h"
#include "platform/linux/PortalAppearance.h"
#include "platform/linux/PowerProfiles.h"
#include "platform/linux/ScreenSleepMonitor.h"
#include "platform/linux/StatusNotifierHost.h"
#include "platform/linux/UPowerBattery.h"
#include "platform/linux/WirelessLinks.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/platform/FaultyService.h"
#include "tests/platform/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;
using Answers = test::FaultyService::Answers;
using Way = test::FaultyService::Way;

namespace {

/// What an adapter knows at present, as text; "nothing" while it knows nothing.
using Know = std::function<std::string()>;

QVariantList property(const QVariant& value) {
    return {QVariant::fromValue(QDBusVariant(value))};
}

QVariant object(const char* path) {
    return QVariant::fromValue(QDBusObjectPath(QLatin1String(path)));
}

QDBusMessage changed(const char* path, const char* interface, const QVariantMap& values) {
    auto signal = QDBusMessage::createSignal(
        QLatin1String(path), u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
    signal << QLatin1String(interface) << values << QStringList();
    return signal;
}

std::string text(std::optional<bool> value) {
    return value ? (*value ? "yes" : "no") : "nothing";
}

/// An adapter and the service that it follows. The service has two states: the adapter knows "yes"
/// in the one, and what the member `no` says in the other.
struct Subject {
    const char* name;
    const char* service;
    std::function<Answers(bool yes)> answers;
    /// The signal by which the service announces a state.
    std::function<QDBusMessage(bool yes)> news;
    std::function<Know(const MessageBus& bus, AppClock& clock)> create;
    /// What the adapter reports in the other state.
    const char* no = "no";
    /// Whether the adapter asks again after an error. Other adapters take an error as final.
    bool asksAgainAfterErrors = false;

    friend void PrintTo(const Subject& subject, std::ostream* out) { *out << subject.name; }
};

template <class Adapter, class Read>
Know knowing(std::shared_ptr<Adapter> adapter, Read read) {
    return [adapter = std::move(adapter), read] { return text(read(*adapter)); };
}

const auto ignore = [] {};

Subject battery() {
    static constexpr const char* device = "org.freedesktop.UPower.Device";
    static constexpr const char* path = "/org/freedesktop/UPower/devices/battery_BAT0";
    return {"battery",
            "org.freedesktop.UPower",
            [=](bool yes) -> Answers {
                return {{u"EnumerateDevices"_s,
                         {QVariant::fromValue(QList{QDBusObjectPath(QLatin1String(path))})}},
                        {u"GetAll org.freedesktop.UPower.Device"_s,
                         {QVariantMap{{u"Type"_s, 2U},
                                      {u"PowerSupply"_s, true},
                                      {u"IsPresent"_s, true},
                                      {u"Percentage"_s, 50.0},
                                      {u"State"_s, yes ? 1U : 2U}}}},
                        {u"GetAll org.freedesktop.UPower"_s, {QVariantMap{{u"OnBattery"_s, !yes}}}},
                        {u"Refresh"_s, {}}};
            },
            [=](bool yes) { return changed(path, device, {{u"State"_s, yes ? 1U : 2U}}); },
            [](const MessageBus& bus, AppClock& clock) {
                return knowing(std::make_shared<UPowerBattery>(bus, clock, ignore),
                               [](const UPowerBattery& source) -> std::optional<bool> {
                                   const auto reading = source.reading();
                                   return reading ? reading->charging : std::nullopt;
                               });
            },
            "no",
            true};
}

Subject powerMode() {
    static constexpr const char* name = "net.hadess.PowerProfiles";
    const auto state = [](bool yes) {
        return QVariantMap{{u"ActiveProfile"_s, yes ? u"power-saver"_s : u"balanced"_s}};
    };
    return {
        "powerMode",
        name,
        [=](bool yes) -> Answers { return {{u"GetAll net.hadess.PowerProfiles"_s, {state(yes)}}}; },
        [=](bool yes) { return changed("/net/hadess/PowerProfiles", name, state(yes)); },
        [](const MessageBus& bus, AppClock&) {
            return knowing(std::make_shared<PowerProfiles>(bus, ignore),
                           [](const PowerProfiles& source) { return source.isOn(); });
        },
        "no",
        true};
}

Subject bluetooth() {
    using Interfaces = QMap<QString, QVariantMap>;
    using Objects = QMap<QDBusObjectPath, Interfaces>;
    static constexpr const char* adapter = "org.bluez.Adapter1";
    static constexpr const char* path = "/org/bluez/hci0";
    qDBusRegisterMetaType<Interfaces>();
    qDBusRegisterMetaType<Objects>();
    return {"bluetooth", "org.bluez",
            [=](bool yes) -> Answers {
                const Objects all{{QDBusObjectPath(QLatin1String(path)),
                                   {{QLatin1String(adapter), {{u"Powered"_s, yes}}}}}};
                return {{u"GetManagedObjects"_s, {QVariant::fromValue(all)}}};
            },
            [=](bool yes) { return changed(path, adapter, {{u"Powered"_s, yes}}); },
            [](const MessageBus& bus, AppClock&) {
                struct Followed {
                    explicit Followed(const MessageBus& bus) : monitor([bus] { return bus; }) {
                        monitor.start([this](const auto& state) { radio = state.isPoweredOn; });
                    }
                    std::optional<bool> radio;
                    BluezMonitor monitor;
                };
                return knowing(std::make_shared<Followed>(bus),
                               [](const Followed& source) { return source.radio; });
            }};
}

Subject wifi() {
    static constexpr const char* device = "org.freedesktop.NetworkManager.Device";
    static constexpr const char* path = "/org/freedesktop/NetworkManager/Devices/1";
    const auto state = [](bool yes) { return QVariant(yes ? 100U : 30U); };
    return {
        "wifi", "org.freedesktop.NetworkManager",
        [=](bool yes) -> Answers {
            return {{u"Get org.freedesktop.NetworkManager Devices"_s,
                     property(QVariant::fromValue(QList{QDBusObjectPath(QLatin1String(path))}))},
                    {u"Get org.freedesktop.NetworkManager.Device DeviceType"_s, property(2U)},
                    {u"GetAll org.freedesktop.NetworkManager.Device"_s,
                     {QVariantMap{{u"Interface"_s, u"card0"_s}, {u"State"_s, state(yes)}}}},
                    {u"GetAll org.freedesktop.NetworkManager.Device.Wireless"_s,
                     {QVariantMap{{u"ActiveAccessPoint"_s, object("/")}}}}};
        },
        [=](bool yes) { return changed(path, device, {{u"State"_s, state(yes)}}); },
        [](const MessageBus& bus, AppClock&) {
            struct Followed {
                explicit Followed(const MessageBus& bus)
                    : source([bus] { return bus; }, {.devices = "/nowhere"}) {
                    source.start(WiFiSource::Names::omit,
                                 [this](const WiFiSource::Links& all) { links = all; });
                }
                WiFiSource::Links links;
                WirelessLinks source;
            };
            return knowing(
                std::make_shared<Followed>(bus), [](const Followed& wifi) -> std::optional<bool> {
                    return wifi.links && !wifi.links->empty() ? wifi.links->front().interface.active
                                                              : std::nullopt;
                });
        }};
}

Subject metered() {
    static constexpr const char* name = "org.freedesktop.NetworkManager";
    const auto value = [](bool yes) { return QVariant(yes ? 1U : 2U); };
    return {"metered", name,
            [=](bool yes) -> Answers {
                return {{u"Get org.freedesktop.NetworkManager Metered"_s, property(value(yes))}};
            },
            [=](bool yes) {
                return changed("/org/freedesktop/NetworkManager", name,
                               {{u"Metered"_s, value(yes)}});
            },
            [](const MessageBus& bus, AppClock&) {
                return knowing(std::make_shared<NetworkManagerMetered>(bus, ignore),
                               [](const NetworkManagerMetered& source) { return source.value(); });
            }};
}

Subject desktopSession() {
    static constexpr const char* interface = "org.freedesktop.login1.Session";
    static constexpr const char* path = "/org/freedesktop/login1/session/_31";
    return {"session", "org.freedesktop.login1",
            [=](bool yes) -> Answers {
                return {{u"GetSessionByPID"_s, {object(path)}},
                        {u"Get org.freedesktop.login1.Session Active"_s, property(yes)}};
            },
            [=](bool yes) { return changed(path, interface, {{u"Active"_s, yes}}); },
            [](const MessageBus& bus, AppClock&) {
                struct Followed {
                    explicit Followed(const MessageBus& bus)
                        : source(bus, u"Active"_s, [this](auto value) { isActive = value; }) {}
                    std::optional<bool> isActive;
                    LogindSession source;
                };
                return knowing(std::make_shared<Followed>(bus),
                               [](const Followed& source) { return source.isActive; });
            }};
}

Subject screens() {
    static constexpr const char* name = "org.gnome.ScreenSaver";
    return {"screens",
            name,
            [](bool yes) -> Answers { return {{u"GetActive"_s, {yes}}}; },
            [=](bool yes) {
                return QDBusMessage::createSignal(u"/org/gnome/ScreenSaver"_s, QLatin1String(name),
                                                  u"ActiveChanged"_s)
                       << yes;
            },
            [](const MessageBus& bus, AppClock&) {
                struct Followed {
                    explicit Followed(const MessageBus& bus) : monitor(bus, bus, center) {}
                    NotificationCenter center;
                    ScreenSleepMonitor monitor;
                };
                return [followed = std::make_shared<Followed>(bus)] {
                    return followed->monitor.areAsleep() ? std::string("yes") : "nothing";
                };
            },
            "nothing"};
}

Subject screensOfMutter() {
    static constexpr const char* name = "org.gnome.Mutter.DisplayConfig";
    const auto mode = [](bool yes) { return QVariant(yes ? 3 : 0); };
    return {"screensOfMutter",
            name,
            [=](bool yes) -> Answers {
                return {
                    {u"Get org.gnome.Mutter.DisplayConfig PowerSaveMode"_s, property(mode(yes))}};
            },
            [=](bool yes) {
                return changed("/org/gnome/Mutter/DisplayConfig", name,
                               {{u"PowerSaveMode"_s, mode(yes)}});
            },
            screens().create,
            "nothing"};
}

Subject tray() {
    static constexpr const char* name = "org.kde.StatusNotifierWatcher";
    return {"tray",
            name,
            [](bool yes) -> Answers {
                return {{u"Get org.kde.StatusNotifierWatcher IsStatusNotifierHostRegistered"_s,
                         property(yes)}};
            },
            [=](bool) {
                return QDBusMessage::createSignal(u"/StatusNotifierWatcher"_s, QLatin1String(name),
                                                  u"StatusNotifierHostRegistered"_s);
            },
            [](const MessageBus& bus, AppClock&) {
                const auto isThere = std::make_shared<bool>(false);
                const auto host = std::make_shared<StatusNotifierHost>(
                    bus, [isThere](bool value) { *isThere = value; });
                return [host, isThere] { return *isThere ? std::string("yes") : "nothing"; };
            },
            "nothing"};
}

struct ServiceFaults : testing::TestWithParam<Subject> {
    const Subject& subject = GetParam();
    test::PrivateBus home;
    QDBusConnection bus = home.connect(u"program"_s);
    test::ManualAppClock clock;
    test::FaultyService service{home.connect(u"service"_s), QLatin1String(subject.service)};
    Know know = subject.create(bus, clock);

    ~ServiceFaults() override {
        know = nullptr;
        clock.advance(1000);
    }
    void announce(const QString& sender, bool yes) const {
        ASSERT_TRUE(QDBusConnection(sender).send(subject.news(yes)));
    }
    /// Ends the service if it runs, and starts it in this state.
    void restart(Way way, bool yes) {
        service.stop();
        expect("nothing");
        service.way = way;
        service.answers = subject.answers(yes);
        service.start();
    }
    void expect(const std::string& expected) {
        test::until([&] {
            trustReadings();
            return know() == expected;
        });
    }
    /// Advances the clock for adapters that don't trust the first readings for some time.
    void trustReadings() {
        if (clock.sleeping() > 0)
            clock.advance(UPowerBattery::provisional);
    }
    /// Lets everything arrive that is on its way.
    void arrive() {
        const auto ping = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/"_s,
                                                         u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
        for (int round = 0; round < 8; ++round) {
            for (const auto* name : {"service", "program"})
                QDBusConnection(QLatin1String(name)).call(ping);
            test::settle();
            trustReadings();
        }
    }
    /// When everything has arrived, the adapter knows this.
    void expectFinally(const std::string& expected) {
        arrive();
        EXPECT_EQ(know(), expected);
    }
};

} // namespace

TEST_P(ServiceFaults, ChangesAndRestartsAreFollowedAndOtherSendersIgnored) {
    expectFinally("nothing");
    restart(Way::answer, true);
    expect("yes");
    service.answers = subject.answers(false);
    announce(u"service"_s, false);
    expect(subject.no);
    restart(Way::answer, true);
    expect("yes");
    // Anybody may send signals.
    const auto stranger = home.connect(u"stranger"_s);
    const int calls = service.calls;
    announce(u"stranger"_s, false);
    stranger.call(QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/"_s,
                                                 u"org.freedesktop.DBus.Peer"_s, u"Ping"_s));
    expectFinally("yes");
    EXPECT_EQ(service.calls, calls);
    service.stop();
    expect("nothing");
}

TEST_P(ServiceFaults, MissingLateOrInvalidRepliesAreTolerated) {
    restart(Way::fail, true);
    expectFinally("nothing");
    restart(Way::nonsense, true);
    expectFinally("nothing");
    restart(Way::twice, true);
    expect("yes");
    restart(Way::late, true);
    expectFinally("nothing");
    service.way = Way::answer;
    service.release();
    expect("yes");

    // A service that did not answer once is asked again, although it sends no signal.
    restart(Way::silentOnce, true);
    expect("yes");
    if (subject.asksAgainAfterErrors) {
        restart(Way::failOnce, true);
        expect("yes");
    }

    // The service is replaced before it has answered, and its answers arrive after that.
    restart(Way::late, true);
    expectFinally("nothing");
    service.stop();
    test::FaultyService next{home.connect(u"next"_s), QLatin1String(subject.service)};
    next.answers = subject.answers(false);
    next.start();
    expect(subject.no);
    service.release();
    expectFinally(subject.no);
    next.stop();
    expect("nothing");
}

TEST_P(ServiceFaults, TooManySignalsCauseFewCalls) {
    restart(Way::answer, true);
    expect("yes");
    service.calls = 0;
    for (int i = 0; i < 2000; ++i)
        announce(u"service"_s, true);
    service.answers = subject.answers(false);
    announce(u"service"_s, false);
    expect(subject.no);
    EXPECT_LE(service.calls, 60);
}

INSTANTIATE_TEST_SUITE_P(Adapters, ServiceFaults,
                         testing::Values(battery(), powerMode(), bluetooth(), wifi(), metered(),
                                         desktopSession(), screens(), screensOfMutter(), tray()),
                         [](const auto& subject) { return std::string(subject.param.name); });
