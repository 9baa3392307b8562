#pragma once

#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>

/// The thermal pressure of the whole machine, under the names that records store.
namespace tidemark::ThermalState {

/// Indexed by the value of NSProcessInfoThermalState, mildest first.
inline constexpr auto names =
    std::to_array<std::string_view>({"nominal", "fair", "serious", "critical"});

/// Absent for a number without a state.
constexpr std::optional<std::string_view> name(std::int64_t number) {
    if (number < 0 || number >= std::ssize(names))
        return std::nullopt;
    return names[static_cast<std::size_t>(number)];
}

/// Whether the machine is under thermal pressure that is worth recording.
constexpr bool isElevated(std::string_view name) {
    return name == "serious" || name == "critical";
}

} // namespace tidemark::ThermalState
