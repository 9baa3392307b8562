#pragma once

#include "app/ports/BluetoothSource.h"
#include "app/ports/NetworkPathSource.h"
#include "app/ports/SleepAndSessionSource.h"
#include "app/ports/WiFiNameAccess.h"
#include "app/ports/WiFiSource.h"

#include <memory>
#include <optional>
#include <string>

namespace tidemark {
class NotificationCenter;
}

/// Creates the implementations of the ports for this system. Each system defines these functions in
/// one source file, the only one that chooses its adapters. A source that this system does not have
/// is null.
namespace tidemark::systemServices {

/// `notifications` must outlive the source.
std::unique_ptr<SleepAndSessionSource> sleepAndSession(NotificationCenter& notifications,
                                                       SleepAndSessionSource::Settle settle);

std::unique_ptr<BluetoothSource> bluetooth();
/// Why this machine has no Bluetooth, as a sentence; absent when it has.
std::optional<std::string> bluetoothAbsence();
std::unique_ptr<NetworkPathSource> networkPath();
std::unique_ptr<WiFiSource> wifi();
/// Null where names may be read without a permission of the system.
std::unique_ptr<WiFiNameAccess> wifiNameAccess();

} // namespace tidemark::systemServices
