#pragma once

#include "core/activity/NetworkManagerValues.h"
#include "platform/linux/GuardedSubscription.h"
#include "platform/linux/Rereading.h"

#include <QObject>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// One Wi-Fi device of NetworkManager (org.freedesktop.NetworkManager.Device.Wireless,
/// https://networkmanager.dev/docs/api). Reads again when the state of the device changes, or when
/// an access point or a name that is still missing appears. The bit rate and the signal strength
/// change every few seconds and cause no reading. Main thread only.
class NetworkManagerDevice final : public QObject {
public:
    struct State {
        /// The kernel's name of the interface.
        std::string interface;
        /// Absent when NetworkManager does not manage the device.
        std::optional<bool> isUp;
        /// The network while the link is up. Kept through moments without an access point, as when
        /// the device changes to another one of the same network.
        std::optional<NetworkManagerValues::AccessPoint> point;
    };

    /// `changed` is called from the event loop after each reading, except when the device can't be
    /// read. Without `withName` the network's name is not read. `service` must outlive this object.
    NetworkManagerDevice(BusService& service, QString path, bool withName,
                         std::function<void()> changed);

    /// Absent until it has been read.
    const std::optional<State>& state() const { return known; }

private:
    struct PointReading;

    void read();
    void useDevice(const QVariantMap& properties);
    void useConnection(const QVariantMap& properties);
    void readPoint(const QString& point, std::uint32_t bitrate);
    void finish();
    void finishWithoutPoint();
    void followPoint();
    void requestWhenChanged(const QString& object, const QString& interface,
                            const QString& property);

    BusService& service;
    const QString path;
    const bool withName;
    const std::function<void()> changed;
    std::optional<State> known;
    /// The state that is being read.
    State next;
    std::optional<GuardedSubscription> stateChanges;
    /// Object path of the last access point; empty while the link is down.
    QString pointPath;
    /// Present while the access point or its name is not known yet.
    std::vector<std::unique_ptr<GuardedSubscription>> pointChanges;
    /// The access point that `pointChanges` follow; empty when none is known.
    QString followedPoint;
    Rereading rereading{[this] { read(); }};
};

} // namespace tidemark
