#pragma once

#include "platform/linux/ApplicationFinder.h"
#include "platform/linux/DisplaySession.h"
#include "platform/linux/ForeignToplevels.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tidemark {

/// The applications that have a window in a Wayland session, where the compositor reports windows
/// (`ForeignToplevels`); nothing elsewhere. Lives on the thread of the connection.
class WaylandApplications final : public DisplayReader {
public:
    /// Sorted by identifier, each once.
    using Changed = std::function<void(std::vector<ClipApplication>)>;

    /// `changed` is called with the present applications, and again when they differ.
    WaylandApplications(WaylandConnection& connection, Changed changed,
                        ApplicationFinder& applications);

private:
    void read();

    const Changed changed;
    ApplicationFinder& applications;
    ForeignToplevels windows;
    /// The identifiers that the windows name, as they were read last.
    std::optional<std::set<std::string>> last;
};

} // namespace tidemark
