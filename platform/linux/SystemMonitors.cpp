#include "app/monitors/SystemMonitors.h"

#include "app/monitors/BatteryActivityMonitor.h"
#include "app/monitors/BluetoothActivityMonitor.h"
#include "app/monitors/EnvironmentActivityMonitor.h"
#include "app/monitors/NetworkActivityMonitor.h"
#include "core/system/SystemFacts.h"
#include "platform/linux/BluezMonitor.h"
#include "platform/linux/KernelNetworkPath.h"
#include "platform/linux/MountTableWatch.h"
#include "platform/linux/PowerProfiles.h"
#include "platform/linux/SessionDisplays.h"
#include "platform/linux/ThermalWatch.h"
#include "platform/linux/UPowerBattery.h"
#include "platform/linux/UserVolumes.h"
#include "platform/linux/WirelessLinks.h"

namespace tidemark {

namespace {

using Surroundings = SwitchedMonitor::Surroundings;
using DidChange = std::function<void()>;

std::unique_ptr<ActivityMonitor> network(const Surroundings& surroundings) {
    return std::make_unique<NetworkActivityMonitor>(
        surroundings, NetworkActivityMonitor::Sources{
                          .path = std::make_unique<KernelNetworkPath>(MessageBus::system),
                          .wifi = std::make_unique<WirelessLinks>(MessageBus::system)});
}

std::unique_ptr<ActivityMonitor> bluetooth(const Surroundings& surroundings) {
    return std::make_unique<BluetoothActivityMonitor>(
        surroundings, std::make_unique<BluezMonitor>(MessageBus::system));
}

std::unique_ptr<ActivityMonitor> environment(const Surroundings& surroundings) {
    const VolumeReading volumeReading{
        .list = [] { return userVolumes::read({}); },
        .details = [](const auto& path) { return SystemFacts::readVolumeContext(path); }};
    const auto volumes = [](DidChange didChange) {
        return std::make_unique<MountTableWatch>(userVolumes::Tables{}, std::move(didChange));
    };
    const auto displays = [](DidChange didChange) {
        return std::make_unique<SessionDisplays>(std::move(didChange));
    };
    const auto thermal = [&clock = surroundings.clock](DidChange didChange) {
        return std::make_unique<ThermalWatch>("/sys", MessageBus::system(), clock,
                                              std::move(didChange));
    };
    return std::make_unique<EnvironmentActivityMonitor>(
        surroundings, EnvironmentActivityMonitor::Sources{.volumes = volumes,
                                                          .displays = displays,
                                                          .thermal = thermal,
                                                          .volumeReading = volumeReading});
}

std::unique_ptr<BatteryActivityMonitor> battery(const Surroundings& surroundings) {
    const auto source = [&clock = surroundings.clock](DidChange didChange) {
        return std::make_unique<UPowerBattery>(MessageBus::system(), clock, std::move(didChange));
    };
    const auto mode = [](DidChange didChange) {
        return std::make_unique<PowerProfiles>(MessageBus::system(), std::move(didChange));
    };
    return std::make_unique<BatteryActivityMonitor>(
        surroundings, BatteryActivityMonitor::Sources{.battery = source, .lowPowerMode = mode});
}

} // namespace

systemMonitors::Monitors systemMonitors::create(const Surroundings& surroundings) {
    Monitors monitors;
    monitors.all.push_back(network(surroundings));
    monitors.all.push_back(bluetooth(surroundings));
    monitors.all.push_back(environment(surroundings));
    auto power = battery(surroundings);
    monitors.battery = [&monitor = *power] { return monitor.reading(); };
    monitors.all.push_back(std::move(power));
    return monitors;
}

} // namespace tidemark
