#pragma once

#include "platform/linux/WaylandConnection.h"

#include <list>
#include <optional>
#include <string>

namespace tidemark {

/// The windows of all programs, by the protocol wlr-foreign-toplevel-management-unstable-v1, where
/// the compositor has it. Lives on the thread of the connection.
class ForeignToplevels {
public:
    explicit ForeignToplevels(WaylandConnection& connection);

    /// False when this compositor does not report windows.
    bool isOffered() const { return static_cast<bool>(manager); }
    /// The identifier of the application of the active window; absent without one.
    std::optional<std::string> activeApplication() const;

private:
    struct Window {
        WaylandObject object;
        std::string application;
        bool isActive = false;
    };
    struct Protocol;

    Window* windowOf(wl_proxy* object);

    WaylandObject manager;
    std::list<Window> windows;
};

} // namespace tidemark
