#include "app/ports/ServiceReport.h"

#include "app/ports/DesktopServices.h"
#include "platform/linux/MessageBus.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEventLoop>
#include <QObject>
#include <QTimer>
#include <array>
#include <chrono>

namespace tidemark {

namespace {

constexpr const char* noAnswer = "does not answer";
constexpr const char* answers = "answers";
constexpr const char* notRunning = "not running";
constexpr const char* noBus = "no message bus";

constexpr std::chrono::seconds patience{3};

/// A name on a message bus, and what its service is used for. Where each desktop has a service of
/// its own for one use, all of them have the same `name` and stand one after the other.
struct BusName {
    const char* name;
    const char* use;
    MessageBus (*bus)();
    const char* onBus;
};

constexpr auto busNames = std::to_array<BusName>({
    {"logind", "sleep and session", &MessageBus::system, "org.freedesktop.login1"},
    {"UPower", "power source and battery", &MessageBus::system, "org.freedesktop.UPower"},
    {"Power profiles", "low power mode", &MessageBus::system, "net.hadess.PowerProfiles"},
    {"Power profiles", "low power mode", &MessageBus::system,
     "org.freedesktop.UPower.PowerProfiles"},
    {"NetworkManager", "Wi-Fi and metered networks", &MessageBus::system,
     "org.freedesktop.NetworkManager"},
    {"BlueZ", "Bluetooth", &MessageBus::system, "org.bluez"},
    {"Service manager", "starts of applications", &MessageBus::session, "org.freedesktop.systemd1"},
    {"Screen saver", "screen sleep", &MessageBus::session, "org.freedesktop.ScreenSaver"},
    {"Screen saver", "screen sleep", &MessageBus::session, "org.gnome.ScreenSaver"},
    {"Screen saver", "screen sleep", &MessageBus::session, "org.cinnamon.ScreenSaver"},
    {"Screen saver", "screen sleep", &MessageBus::session, "org.mate.ScreenSaver"},
    {"Status icons", "the icon beside the clock", &MessageBus::session,
     "org.kde.StatusNotifierWatcher"},
    {"Desktop portal", "appearance", &MessageBus::session, "org.freedesktop.portal.Desktop"},
    {"Notifications", "messages", &MessageBus::session, "org.freedesktop.Notifications"},
});

std::string stateAfter(const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ErrorMessage)
        return answers;
    switch (const QDBusError error(reply); error.type()) {
    case QDBusError::ServiceUnknown:
        return notRunning;
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
    case QDBusError::Disconnected:
        return noAnswer;
    default:
        // An error is an answer, too.
        return reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner")
                   ? notRunning
                   : answers;
    }
}

/// Asks all names at the same time.
class Asking : public QObject {
public:
    Asking() {
        for (const auto& each : busNames)
            reports.push_back({each.name, each.use, noAnswer});
        for (std::size_t place = 0; place < busNames.size(); ++place) {
            buses.push_back(busNames[place].bus());
            buses.back().whenConnected(
                this, [this, place](const QDBusConnection& bus) { ask(place, bus); });
        }
    }

    /// One report for each use. Its state is `answers` if one of the services for that use answers,
    /// otherwise the state of the first of them.
    std::vector<ServiceReport> whenAnswered() {
        if (open > 0) {
            QTimer::singleShot(patience, &loop, &QEventLoop::quit);
            loop.exec();
        }
        std::vector<ServiceReport> found;
        for (const auto& report : reports)
            if (found.empty() || found.back().name != report.name)
                found.push_back(report);
            else if (report.state == answers)
                found.back().state = answers;
        return found;
    }

private:
    void ask(std::size_t place, const QDBusConnection& bus) {
        if (!bus.isConnected())
            return settle(place, noBus);
        auto ping = QDBusMessage::createMethodCall(
            QLatin1String(busNames[place].onBus), QStringLiteral("/"),
            QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
        ping.setAutoStartService(false);
        auto* const watcher = new QDBusPendingCallWatcher(
            bus.asyncCall(ping, std::chrono::milliseconds(patience).count()), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this,
                [this, place](QDBusPendingCallWatcher* finished) {
                    settle(place, stateAfter(QDBusPendingReply<>(*finished).reply()));
                });
    }
    void settle(std::size_t place, std::string state) {
        reports[place].state = std::move(state);
        if (--open == 0)
            loop.quit();
    }

    std::vector<MessageBus> buses;
    std::vector<ServiceReport> reports;
    std::size_t open = busNames.size();
    QEventLoop loop;
};

} // namespace

std::vector<ServiceReport> serviceReport::ofSystem() {
    auto reports = Asking().whenAnswered();
    reports.push_back({"Display", "clipboard, displays and windows",
                       desktopServices::hasDisplay() ? answers : "none in this session"});
    return reports;
}

} // namespace tidemark
