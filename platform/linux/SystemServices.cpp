#include "app/ports/SystemServices.h"

#include "app/base/AppClock.h"
#include "core/system/SystemFacts.h"
#include "core/system/UserFolders.h"
#include "platform/linux/AutostartItem.h"
#include "platform/linux/BluetoothPresence.h"
#include "platform/linux/BluezMonitor.h"
#include "platform/linux/FolderFileIndex.h"
#include "platform/linux/KernelNetworkPath.h"
#include "platform/linux/LogindMonitor.h"
#include "platform/linux/MountTableWatch.h"
#include "platform/linux/PowerProfiles.h"
#include "platform/linux/ScreenSleepMonitor.h"
#include "platform/linux/SessionClipboard.h"
#include "platform/linux/SessionDisplays.h"
#include "platform/linux/ThermalWatch.h"
#include "platform/linux/UPowerBattery.h"
#include "platform/linux/UnitApplications.h"
#include "platform/linux/UserVolumes.h"
#include "platform/linux/WirelessLinks.h"

#include <optional>

namespace tidemark {

std::unique_ptr<SleepAndSessionSource>
systemServices::sleepAndSession(NotificationCenter& notifications,
                                SleepAndSessionSource::Settle settle) {
    return std::make_unique<LogindMonitor>(MessageBus::system(), notifications, std::move(settle));
}

bool systemServices::hasConnections() {
    return true;
}

bool systemServices::hasPower() {
    return true;
}

bool systemServices::hasEnvironment() {
    return true;
}

std::unique_ptr<BatterySource> systemServices::battery(DidChange didChange) {
    return std::make_unique<UPowerBattery>(MessageBus::system(), AppClock::system(),
                                           std::move(didChange));
}

std::unique_ptr<LowPowerModeSource> systemServices::lowPowerMode(DidChange didChange) {
    return std::make_unique<PowerProfiles>(MessageBus::system(), std::move(didChange));
}

std::unique_ptr<DisplaySource> systemServices::displays(DidChange didChange) {
    return std::make_unique<SessionDisplays>(std::move(didChange));
}

std::unique_ptr<ScreenSleepSource> systemServices::screenSleep(NotificationCenter& notifications) {
    return std::make_unique<ScreenSleepMonitor>(MessageBus::system(), MessageBus::session(),
                                                notifications);
}

std::unique_ptr<ThermalSource> systemServices::thermalState(DidChange didChange) {
    return std::make_unique<ThermalWatch>("/sys", MessageBus::system(), AppClock::system(),
                                          std::move(didChange));
}

std::unique_ptr<VolumeSource> systemServices::volumes(DidChange didChange) {
    return std::make_unique<MountTableWatch>(userVolumes::Tables{}, std::move(didChange));
}

VolumeReading systemServices::volumeReading() {
    return {.list = [] { return userVolumes::read({}); },
            .details = [](const auto& path) { return SystemFacts::readVolumeContext(path); }};
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

std::unique_ptr<Clipboard> systemServices::clipboard() {
    return std::make_unique<SessionClipboard>();
}

std::optional<std::string> systemServices::clipboardAbsence() {
    const auto addresses = GraphicalSessions::Addresses::ofEnvironment();
    if (!addresses.wayland.empty() || !addresses.x11.empty())
        return std::nullopt;
    return std::string(SessionClipboard::noSession);
}

std::unique_ptr<ApplicationSource> systemServices::applications() {
    return std::make_unique<UnitApplications>(UnitApplications::Setup{});
}

std::optional<std::string> systemServices::applicationsAbsence() {
    // The socket of the user's service manager.
    const auto runtime = UserFolders::runtime();
    std::error_code unknown;
    if (runtime && std::filesystem::exists(*runtime / "systemd/private", unknown))
        return std::nullopt;
    return "No service manager runs for this user, so launches of applications can’t be noticed.";
}

bool systemServices::hasFileIndex() {
    return true;
}

std::unique_ptr<FileIndex> systemServices::fileIndex() {
    return std::make_unique<FolderFileIndex>(FolderFileIndex::Setup{});
}

std::unique_ptr<LoginItem> systemServices::loginItem(std::vector<std::string> command) {
    return std::make_unique<AutostartItem>(AutostartItem::Places::current(), std::move(command));
}

} // namespace tidemark
