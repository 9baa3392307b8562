#pragma once

#include <array>
#include <string_view>

/// The options of tidemark-desktop, for the program, its help and its manual page.
namespace tidemark::desktopOptions {

struct Option {
    std::string_view name;
    std::string_view help;
};

/// Opens no window, for a start at login: starting the program again opens it.
inline constexpr Option background{"background", "Record without a window until it is opened"};
/// For scripts that choose between this program and one without windows.
inline constexpr Option hasDisplay{
    "has-display", "Open nothing; exit with 0 if a window can be opened, else with 1"};
inline constexpr Option help{"help", "Print this help and exit"};
inline constexpr Option version{"version", "Print the version of the program and exit"};

inline constexpr std::array all{background, hasDisplay, help, version};

} // namespace tidemark::desktopOptions
