#include "app/ports/SystemServices.h"

#include "platform/linux/BluetoothPresence.h"
#include "platform/linux/BluezMonitor.h"
#include "platform/linux/KernelNetworkPath.h"
#include "platform/linux/LogindMonitor.h"
#include "platform/linux/WirelessLinks.h"

namespace tidemark {

std::unique_ptr<SleepAndSessionSource>
systemServices::sleepAndSession(NotificationCenter& notifications,
                                SleepAndSessionSource::Settle settle) {
    return std::make_unique<LogindMonitor>(MessageBus::system(), notifications, std::move(settle));
}

std::unique_ptr<BluetoothSource> systemServices::bluetooth() {
    return std::make_unique<BluezMonitor>(MessageBus::system);
}

std::optional<std::string> systemServices::bluetoothAbsence() {
    return bluetoothPresence::absence();
}

std::unique_ptr<NetworkPathSource> systemServices::networkPath() {
    return std::make_unique<KernelNetworkPath>(MessageBus::system);
}

std::unique_ptr<WiFiSource> systemServices::wifi() {
    return std::make_unique<WirelessLinks>(MessageBus::system);
}

std::unique_ptr<WiFiNameAccess> systemServices::wifiNameAccess() {
    return nullptr;
}

} // namespace tidemark
