#include "app/ports/SystemServices.h"

#include "app/base/AppClock.h"
#include "core/system/SystemFacts.h"
#include "platform/linux/LogindMonitor.h"
#include "platform/linux/MountTableWatch.h"
#include "platform/linux/PowerProfiles.h"
#include "platform/linux/ScreenSleepMonitor.h"
#include "platform/linux/ThermalWatch.h"
#include "platform/linux/UPowerBattery.h"
#include "platform/linux/UserVolumes.h"

namespace tidemark {

std::unique_ptr<SleepAndSessionSource>
systemServices::sleepAndSession(NotificationCenter& notifications,
                                SleepAndSessionSource::Settle settle) {
    return std::make_unique<LogindMonitor>(MessageBus::system(), notifications, std::move(settle));
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

std::unique_ptr<DisplaySource> systemServices::displays(DidChange) {
    return nullptr;
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

} // namespace tidemark
