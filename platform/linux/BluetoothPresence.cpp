#include "platform/linux/BluetoothPresence.h"

#include "platform/linux/PathList.h"

#include <algorithm>

namespace tidemark::bluetoothPresence {

namespace {

constexpr const char* serviceFile = "dbus-1/system-services/org.bluez.service";

bool isEmpty(const std::filesystem::path& folder) {
    std::error_code error;
    return std::filesystem::directory_iterator(folder, error)
           == std::filesystem::directory_iterator();
}

} // namespace

std::optional<std::string> absence(const std::filesystem::path& adapters,
                                   const std::vector<std::filesystem::path>& dataFolders) {
    if (isEmpty(adapters))
        return std::string(noAdapter);
    std::error_code error;
    const bool hasService = std::ranges::any_of(dataFolders, [&](const auto& folder) {
        return std::filesystem::exists(folder / serviceFile, error);
    });
    return hasService ? std::nullopt
                      : std::optional<std::string>("The Bluetooth service BlueZ is not installed.");
}

std::optional<std::string> absence() {
    return absence("/sys/class/bluetooth", systemDataFolders());
}

} // namespace tidemark::bluetoothPresence
