#pragma once

#include "app/base/NotificationCenter.h"
#include "app/monitors/BluetoothMonitor.h"
#include "app/monitors/NetworkMonitor.h"

#include <memory>
#include <vector>

namespace tidemark {

/// Records changes of the network connection, the Wi-Fi link, the Bluetooth radio and the
/// connections of paired devices, as far as the user turned them on
/// (`preference::networkHistoryEnabled`, `bluetoothHistoryEnabled`). Nothing is recorded while the
/// machine sleeps and in the first seconds after that, when everything connects again; then both
/// histories begin with a new starting point. Main thread only.
class ConnectionActivityMonitor final : public Observable, public ActivityMonitor {
    Q_OBJECT

public:
    /// Seconds after a wake in which nothing is observed.
    static constexpr double wakeDelay = 5;

    /// References must outlive this object. Sources are null where the system has none.
    struct Setup {
        const Preferences& preferences;
        /// Posts sleep and wake.
        NotificationCenter& workspaceCenter;
        std::unique_ptr<NetworkPathSource> path{};
        std::unique_ptr<WiFiSource> wifi{};
        /// Null where names may be read without a permission of the system.
        std::unique_ptr<WiFiNameAccess> wifiNames{};
        std::unique_ptr<BluetoothSource> bluetooth{};
        AppClock& clock = AppClock::system();
    };

    explicit ConnectionActivityMonitor(Setup setup);
    ~ConnectionActivityMonitor() override;

    void start(Record record) override;
    void stop() override;

    /// One line for each source, in the words of the product.
    Published<std::string> networkStatus;
    Published<std::string> wifiStatus;
    Published<std::string> bluetoothStatus;
    /// Whether names of networks are recorded.
    const WiFiDetailsProvider& wifiDetails() const { return details; }

private:
    bool isObserving() const { return isStarted && !isSleeping; }
    void switchNetwork();
    void switchBluetooth();
    void pauseForSleep();
    void resumeAfterWake();

    const Preferences& preferences;
    NotificationCenter& workspaceCenter;
    AppClock& clock;
    const std::unique_ptr<NetworkPathSource> path;
    const std::unique_ptr<WiFiSource> wifi;
    const std::unique_ptr<WiFiNameAccess> wifiNames;
    const std::unique_ptr<BluetoothSource> bluetoothSource;
    WiFiDetailsProvider details;
    TaskScope tasks;
    SettlingTimer wakeTimer;
    NetworkMonitor network;
    BluetoothMonitor bluetooth;
    Record record;
    bool isStarted = false;
    bool isSleeping = false;
    std::vector<NotificationCenter::Token> tokens;
};

} // namespace tidemark
