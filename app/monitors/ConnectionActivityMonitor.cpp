#include "app/monitors/ConnectionActivityMonitor.h"

#include "app/preferences/FollowSettings.h"

#include <utility>

namespace tidemark {

namespace {

constexpr const char* notYet = "Not observing yet";
constexpr const char* off = "Off";

struct Statuses {
    Published<std::string>& network;
    Published<std::string>& bluetooth;
};

/// Shows why nothing is observed, for the histories that the user turned on.
void showIfOn(const Preferences& preferences, const Statuses& statuses, const char* why) {
    if (read(preferences, preference::networkHistoryEnabled))
        statuses.network = why;
    if (read(preferences, preference::bluetoothHistoryEnabled))
        statuses.bluetooth = why;
}

} // namespace

ConnectionActivityMonitor::ConnectionActivityMonitor(Setup setup)
    : networkStatus(this, notYet), wifiStatus(this, notYet), bluetoothStatus(this, notYet),
      preferences(setup.preferences), workspaceCenter(setup.workspaceCenter), clock(setup.clock),
      path(std::move(setup.path)), wifi(std::move(setup.wifi)),
      wifiNames(std::move(setup.wifiNames)), bluetoothSource(std::move(setup.bluetooth)),
      details(preferences, wifiNames.get()), wakeTimer(clock, tasks),
      network(path.get(), wifi.get(), details, {networkStatus, wifiStatus}, clock, tasks),
      bluetooth(bluetoothSource.get(), bluetoothStatus, clock, tasks) {
    const auto useNetwork = [this] { switchNetwork(); };
    followSettings(preferences, this, useNetwork, preference::networkHistoryEnabled);
    const auto useBluetooth = [this] { switchBluetooth(); };
    followSettings(preferences, this, useBluetooth, preference::bluetoothHistoryEnabled);
}

ConnectionActivityMonitor::~ConnectionActivityMonitor() {
    ConnectionActivityMonitor::stop();
}

void ConnectionActivityMonitor::start(Record to) {
    if (std::exchange(isStarted, true))
        return;
    isSleeping = false;
    record = std::move(to);
    switchNetwork();
    switchBluetooth();
    tokens.push_back(workspaceCenter.observe(notification::willSleep, [this] { pauseForSleep(); }));
    tokens.push_back(workspaceCenter.observe(notification::didWake, [this] { resumeAfterWake(); }));
    // Whether and when the machine wakes is then not known, so it counts as awake.
    tokens.push_back(
        workspaceCenter.observe(notification::sleepAbandoned, [this] { resumeAfterWake(); }));
}

void ConnectionActivityMonitor::stop() {
    if (!std::exchange(isStarted, false))
        return;
    tokens.clear();
    wakeTimer.stop();
    network.stop();
    bluetooth.stop();
    record = nullptr;
    showIfOn(preferences, {networkStatus, bluetoothStatus}, "Paused");
}

void ConnectionActivityMonitor::switchNetwork() {
    network.stop();
    if (!read(preferences, preference::networkHistoryEnabled))
        networkStatus = off;
    else if (isObserving())
        network.start(record);
}

void ConnectionActivityMonitor::switchBluetooth() {
    bluetooth.stop();
    if (!read(preferences, preference::bluetoothHistoryEnabled))
        bluetoothStatus = off;
    else if (isObserving())
        bluetooth.start(record);
}

void ConnectionActivityMonitor::pauseForSleep() {
    isSleeping = true;
    wakeTimer.stop();
    network.stop();
    bluetooth.stop();
    showIfOn(preferences, {networkStatus, bluetoothStatus}, "Paused during sleep");
}

void ConnectionActivityMonitor::resumeAfterWake() {
    wakeTimer.start(clock.now(), wakeDelay, [this](Date) {
        isSleeping = false;
        switchNetwork();
        switchBluetooth();
    });
}

} // namespace tidemark
