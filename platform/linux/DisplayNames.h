#pragma once

#include <string_view>

namespace tidemark {

/// True for the names of connectors of panels inside of the machine, such as "eDP-1".
inline bool isBuiltInConnector(std::string_view name) {
    return name.starts_with("eDP") || name.starts_with("LVDS") || name.starts_with("DSI");
}

} // namespace tidemark
