#pragma once

#include "app/ports/Clipboard.h"
#include "platform/linux/ApplicationFinder.h"
#include "platform/linux/ClipFollower.h"
#include "platform/linux/DisplaySession.h"
#include "platform/linux/ForeignToplevels.h"
#include "platform/linux/WaylandConnection.h"

namespace tidemark {

/// Follows the clipboard of a Wayland compositor by the data-control protocols. The types of an
/// item are known before anything is read of it. Lives on the thread of the connection.
class WaylandClipboard final : public DisplayReader {
public:
    /// Among the types of what this program offers.
    static constexpr std::string_view ownType = "application/x-tidemark-clip";

    struct Setup {
        ClipFollower::Setup follower;
        /// Called once, with what this compositor lets one know.
        Clipboard::AccessChanged started;
    };

    /// `connection` must have one of the protocols (`dataControl::isOffered`).
    WaylandClipboard(WaylandConnection& connection, Setup setup, ApplicationFinder& applications);
    ~WaylandClipboard() override;

private:
    class Offer;

    void announce(wl_proxy* offer);
    void select(wl_proxy* offer);

    WaylandConnection& connection;
    const Setup setup;
    ApplicationFinder& applications;
    ForeignToplevels windows;
    ClipFollower follower;
    /// The offers whose types are known and whose purpose is not.
    std::vector<std::unique_ptr<Offer>> announced;
    bool isFirst = true;
    WaylandObject manager;
    WaylandObject seat;
    WaylandObject device;
};

} // namespace tidemark
