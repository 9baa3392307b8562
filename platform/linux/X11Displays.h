#pragma once

#include "app/ports/DisplaySource.h"
#include "platform/linux/DisplaySession.h"
#include "platform/linux/X11Connection.h"

#include <functional>

#include <xcb/randr.h>

namespace tidemark {

/// The outputs of an X11 server that show something, by RandR. The server is asked for what it
/// knows; displays are not probed. Lives on the thread of the connection.
class X11Displays final : public DisplayReader, private X11Connection::Observer {
public:
    using Changed = std::function<void(std::vector<ObservedDisplay>)>;

    /// A change comes as several events within this time.
    static constexpr std::chrono::milliseconds settleTime{100};

    /// `changed` is called with the present displays, and again when they differ.
    X11Displays(X11Connection& connection, Changed changed);

private:
    using Resources = xcb_randr_get_screen_resources_current_reply_t;

    void handle(const xcb_generic_event_t& event) override;
    void read();
    std::optional<ObservedDisplay> display(xcb_randr_output_t output, const Resources& resources);
    std::optional<DisplayContext> mode(xcb_randr_crtc_t crtc, const Resources& resources);
    std::string edidOf(xcb_randr_output_t output);

    const Changed changed;
    std::optional<int> firstEvent;
    std::optional<std::vector<ObservedDisplay>> last;
    bool isReadDue = false;
    QObject context;
};

} // namespace tidemark
