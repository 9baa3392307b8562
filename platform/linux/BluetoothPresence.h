#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark::bluetoothPresence {

inline constexpr std::string_view noAdapter = "This computer has no Bluetooth adapter.";

/// Why this machine has no Bluetooth that can be followed, as a sentence: the kernel has no adapter
/// in its folder `adapters`, or none of the data folders of the system (XDG_DATA_DIRS) describes
/// the service BlueZ. Absent when there are both.
std::optional<std::string> absence(const std::filesystem::path& adapters,
                                   const std::vector<std::filesystem::path>& dataFolders);

/// The reason on this machine, by its own folders.
std::optional<std::string> absence();

} // namespace tidemark::bluetoothPresence
