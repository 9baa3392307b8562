#pragma once

#include "platform/linux/WaylandConnection.h"

/// The protocol xdg-output-unstable-v1: how outputs look to programs. Requests and events are in
/// the order of the protocol.
namespace tidemark::xdgOutput {

struct Listener {
    void (*logicalPosition)(void* data, wl_proxy* object, std::int32_t x, std::int32_t y);
    void (*logicalSize)(void* data, wl_proxy* object, std::int32_t width, std::int32_t height);
    void (*done)(void* data, wl_proxy* object);
    void (*name)(void* data, wl_proxy* object, const char* name);
    void (*description)(void* data, wl_proxy* object, const char* description);
};

/// Empty where the compositor does not have the protocol.
WaylandObject bindManager(WaylandConnection& connection);
WaylandObject get(const WaylandObject& manager, wl_output* output);

} // namespace tidemark::xdgOutput
