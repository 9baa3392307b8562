#pragma once

#include "app/ports/ApplicationSource.h"
#include "app/ports/BatterySource.h"
#include "app/ports/BluetoothSource.h"
#include "app/ports/Clipboard.h"
#include "app/ports/DisplaySource.h"
#include "app/ports/FileIndex.h"
#include "app/ports/LoginItem.h"
#include "app/ports/LowPowerModeSource.h"
#include "app/ports/NetworkPathSource.h"
#include "app/ports/ScreenSleepSource.h"
#include "app/ports/SleepAndSessionSource.h"
#include "app/ports/ThermalSource.h"
#include "app/ports/VolumeSource.h"
#include "app/ports/WiFiNameAccess.h"
#include "app/ports/WiFiSource.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {
class NotificationCenter;
}

/// Creates the implementations of the ports for this system. Each system defines these functions in
/// one source file, the only one that chooses its adapters. A source that this system does not have
/// is null.
namespace tidemark::systemServices {

using DidChange = std::function<void()>;

/// `notifications` must outlive the source.
std::unique_ptr<SleepAndSessionSource> sleepAndSession(NotificationCenter& notifications,
                                                       SleepAndSessionSource::Settle settle);

/// Whether this system has adapters for connections; for power; and for volumes, displays and
/// thermal state.
bool hasConnections();
bool hasPower();
bool hasEnvironment();

std::unique_ptr<BatterySource> battery(DidChange didChange);
std::unique_ptr<DisplaySource> displays(DidChange didChange);
std::unique_ptr<LowPowerModeSource> lowPowerMode(DidChange didChange);
/// `notifications` must outlive the source.
std::unique_ptr<ScreenSleepSource> screenSleep(NotificationCenter& notifications);
std::unique_ptr<ThermalSource> thermalState(DidChange didChange);
std::unique_ptr<VolumeSource> volumes(DidChange didChange);
VolumeReading volumeReading();
std::unique_ptr<BluetoothSource> bluetooth();
/// Why this machine has no Bluetooth, as a sentence; absent when it has.
std::optional<std::string> bluetoothAbsence();
std::unique_ptr<NetworkPathSource> networkPath();
std::unique_ptr<WiFiSource> wifi();
/// Null where names may be read without a permission of the system.
std::unique_ptr<WiFiNameAccess> wifiNameAccess();
/// Null where this release has none for the system.
std::unique_ptr<Clipboard> clipboard();
/// Why the clipboard can't be followed in the present session, as a sentence; absent when it can,
/// as far as that is known before it is followed. Empty where `clipboard` is null.
std::optional<std::string> clipboardAbsence();
/// Null where this release has none for the system.
std::unique_ptr<ApplicationSource> applications();
/// Why launches of applications are not noticed on this machine, as a sentence; absent when they
/// are.
std::optional<std::string> applicationsAbsence();
bool hasFileIndex();
/// Null where this release has none for the system.
std::unique_ptr<FileIndex> fileIndex();
/// `command` is the absolute path of the program to start at login, and its arguments. Null where
/// this release has none for the system.
std::unique_ptr<LoginItem> loginItem(std::vector<std::string> command);

} // namespace tidemark::systemServices
