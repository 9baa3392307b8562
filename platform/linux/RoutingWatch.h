#pragma once

#include "core/base/FileDescriptor.h"

#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>

namespace tidemark {

/// Notices changes of links, and for `Subject::paths` also of addresses, routes and rules, by the
/// kernel's messages to rtnetlink(7) groups. The messages are only a reason to look again; their
/// content is not used, since some changes are not reported one by one (routes of a removed
/// interface), and messages may be lost. Main thread only.
class RoutingWatch {
public:
    enum class Subject { links, paths };

    static constexpr std::chrono::milliseconds settling{200};

    /// `changed` is called from the event loop some time after each message, once for all that
    /// arrived until then.
    RoutingWatch(Subject subject, std::function<void()> changed,
                 std::chrono::milliseconds delay = settling);

    /// False when the kernel's messages can't be received.
    bool isOpen() const { return notifier != nullptr; }

private:
    void pause();
    void proceed();

    const std::function<void()> changed;
    FileDescriptor socket;
    std::unique_ptr<QSocketNotifier> notifier;
    /// Runs after a message. Until it ends, further ones only fill the buffer of the socket, so a
    /// flood of them costs nothing.
    QTimer delay;
};

} // namespace tidemark
