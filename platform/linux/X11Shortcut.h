#pragma once

#include "app/base/MainThreadCalls.h"
#include "app/ports/GlobalShortcut.h"
#include "platform/linux/GraphicalSessions.h"

#include <memory>

namespace tidemark {

/// A passive grab of Control–Shift–Space on the root windows of the X display (XGrabKey(3)). The
/// first program that grabs keys has them; for the others they are not available. Main thread only.
class X11Shortcut final : public GlobalShortcut {
public:
    explicit X11Shortcut(Observer observer, std::shared_ptr<GraphicalSessions> sessions =
                                                GraphicalSessions::ofProcess());

private:
    const Observer observer;
    const std::shared_ptr<GraphicalSessions> sessions;
    MainThreadCalls calls;
    /// Keeps the keys grabbed.
    std::shared_ptr<void> reader;
};

} // namespace tidemark
