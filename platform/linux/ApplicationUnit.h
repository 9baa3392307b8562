#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// What the name of a unit of the user's service manager says about the application in it
/// (https://systemd.io/DESKTOP_ENVIRONMENTS).
struct ApplicationUnit {
    /// Possible identifiers of its desktop entry, the most likely one first. There are several
    /// because the name does not show whether it begins with a launcher or with the identifier.
    std::vector<std::string> identifiers;
    /// Whether the session started it, and not the user.
    bool isAutostart = false;

    /// Absent for units that contain no application.
    static std::optional<ApplicationUnit> parse(std::string_view name);

    bool operator==(const ApplicationUnit&) const = default;
};

} // namespace tidemark
