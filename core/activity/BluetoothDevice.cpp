#include "core/activity/BluetoothDevice.h"

#include "core/base/Characters.h"
#include "core/base/Text.h"

#include <array>
#include <string_view>

namespace tidemark {

namespace {

constexpr std::size_t longestName = 120;

/// Indexed by major class; empty where there is no name.
constexpr auto classNames = std::to_array<std::string_view>({
    "",
    "Computer",
    "Phone",
    "",
    "Audio / video accessory",
    "Input accessory",
    "Imaging accessory",
    "Wearable",
    "Toy",
    "Health accessory",
});

} // namespace

std::string BluetoothDevice::displayName() const {
    const std::string_view shown = trimmed(name);
    return std::string(shown.empty() ? "Bluetooth Device" : firstCharacters(shown, longestName));
}

std::optional<std::string> BluetoothDevice::className() const {
    if (majorClass >= classNames.size() || classNames[majorClass].empty())
        return std::nullopt;
    return std::string(classNames[majorClass]);
}

} // namespace tidemark
