#pragma once

#include "platform/linux/ApplicationFinder.h"
#include "platform/linux/DisplaySession.h"
#include "platform/linux/WaylandConnection.h"
#include "platform/linux/X11Connection.h"

#include <memory>
#include <optional>
#include <string>

namespace tidemark {

/// The display servers of the user's session: a Wayland compositor, an X11 server, or both; the X11
/// server then serves the X11 programs of the Wayland session. Everything that follows them shares
/// these connections. Main thread only.
class GraphicalSessions {
public:
    /// The addresses of the servers; empty where there is none.
    struct Addresses {
        std::string wayland{};
        std::string x11{};

        /// `WAYLAND_DISPLAY` and `DISPLAY`.
        static Addresses ofEnvironment();
    };
    using Wayland = DisplaySession<WaylandConnection>;
    using X11 = DisplaySession<X11Connection>;

    /// `entries` are the folders with the desktop entries of applications.
    explicit GraphicalSessions(
        const Addresses& addresses,
        const std::vector<std::filesystem::path>& entries = desktopApplications::folders());

    /// The sessions of this process. They end with the last object that holds them.
    static std::shared_ptr<GraphicalSessions> ofProcess();

    /// Null where there is none.
    Wayland* wayland() { return waylandSession ? &*waylandSession : nullptr; }
    X11* x11() { return x11Session ? &*x11Session : nullptr; }
    /// To be used on the thread of the Wayland connection.
    const std::shared_ptr<ApplicationFinder>& waylandApplications() const { return waylandFinder; }
    /// To be used on the thread of the X11 connection.
    const std::shared_ptr<ApplicationFinder>& x11Applications() const { return x11Finder; }

private:
    const std::shared_ptr<ApplicationFinder> waylandFinder;
    const std::shared_ptr<ApplicationFinder> x11Finder;
    std::optional<Wayland> waylandSession;
    std::optional<X11> x11Session;
};

} // namespace tidemark
