#include "platform/linux/UserService.h"

#include <algorithm>

namespace tidemark {

namespace {

constexpr std::string_view unitSuffix = ".service";

/// The characters of the name of a unit, systemd.unit(5).
bool isUnitCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
           || std::string_view(":-_.\\@").find(c) != std::string_view::npos;
}

} // namespace

std::optional<std::string> userService::nameIn(std::string_view cgroups) {
    constexpr std::string_view unified = "0::";
    while (!cgroups.empty()) {
        const auto line = cgroups.substr(0, cgroups.find('\n'));
        cgroups.remove_prefix(std::min(line.size() + 1, cgroups.size()));
        if (!line.starts_with(unified))
            continue;
        const auto name = line.substr(line.rfind('/') + 1);
        if (name.size() > unitSuffix.size() && name.ends_with(unitSuffix) && !name.starts_with('-')
            && std::ranges::all_of(name, isUnitCharacter))
            return std::string(name);
    }
    return std::nullopt;
}

} // namespace tidemark
