#pragma once

#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>

/// The thermal pressure of the whole machine, by the name that records keep.
namespace tidemark::ThermalState {

/// By the number of NSProcessInfoThermalState, mildest first.
inline constexpr auto names =
    std::to_array<std::string_view>({"nominal", "fair", "serious", "critical"});

/// Absent for a number that is no state.
constexpr std::optional<std::string_view> name(std::int64_t number) {
    if (number < 0 || number >= std::ssize(names))
        return std::nullopt;
    return names[static_cast<std::size_t>(number)];
}

/// The states that are news to people.
constexpr bool isElevated(std::string_view name) {
    return name == "serious" || name == "critical";
}

} // namespace tidemark::ThermalState
