#pragma once

#include "platform/linux/WaylandConnection.h"

#include <functional>
#include <list>
#include <optional>
#include <set>
#include <string>

namespace tidemark {

/// The windows of all programs, by the protocol wlr-foreign-toplevel-management-unstable-v1, where
/// the compositor has it. Lives on the thread of the connection.
class ForeignToplevels {
public:
    /// `changed` is called when a window has appeared, changed or gone, and for each window that
    /// exists at the start; not when the compositor stops reporting windows.
    explicit ForeignToplevels(WaylandConnection& connection, std::function<void()> changed = [] {});

    /// False when this compositor does not report windows.
    bool isOffered() const { return static_cast<bool>(manager); }
    /// The identifier of the application of the active window; absent without one.
    std::optional<std::string> activeApplication() const;
    /// The identifiers of the applications that have a window.
    std::set<std::string> applications() const;

private:
    struct Window {
        WaylandObject object;
        /// Empty until the compositor has reported it, and for windows without one.
        std::string application;
        bool isActive = false;
    };
    struct Protocol;

    Window* windowOf(wl_proxy* object);

    const std::function<void()> changed;
    WaylandObject manager;
    std::list<Window> windows;
};

} // namespace tidemark
