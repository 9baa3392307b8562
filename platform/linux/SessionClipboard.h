#pragma once

#include "app/base/MainThreadCalls.h"
#include "app/ports/Clipboard.h"
#include "platform/linux/ClipFollower.h"
#include "platform/linux/GraphicalSessions.h"

#include <memory>
#include <optional>

namespace tidemark {

/// The clipboard of a Wayland session by the data-control protocols; without them, and in an X11
/// session, the selection of the X11 server.
class SessionClipboard final : public Clipboard {
public:
    static constexpr std::string_view noSession =
        "The clipboard can’t be watched: there is no graphical session.";

    /// `seconds` is called on the threads of the connections.
    explicit SessionClipboard(
        std::shared_ptr<GraphicalSessions> sessions = GraphicalSessions::ofProcess(),
        ClipFollower::Seconds seconds = monotonicSeconds)
        : sessions(std::move(sessions)), seconds(std::move(seconds)) {}

    void watch(std::string excluded, Copied copied, AccessChanged accessChanged) override;
    void unwatch() override;
    bool put(std::vector<ClipData> contents) override;

private:
    struct Watch {
        std::string excluded;
        Copied copied;
        AccessChanged accessChanged;
        MainThreadCalls calls{};
        std::shared_ptr<void> wayland{};
        std::shared_ptr<void> x11{};
    };

    void watchWayland();
    void watchX11();
    /// These return functions that a connection can call on its own thread, and that call those of
    /// `watching` on the main thread.
    AccessChanged accessPosted() const;
    ClipFollower::Setup followerSetup() const;
    bool putOnX11(std::vector<ClipData> contents);

    const std::shared_ptr<GraphicalSessions> sessions;
    const ClipFollower::Seconds seconds;
    std::unique_ptr<Watch> watching;
    MainThreadCalls calls;
    /// What this program has put on the clipboard.
    std::shared_ptr<void> owned;
};

} // namespace tidemark
