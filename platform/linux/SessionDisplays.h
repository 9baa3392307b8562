#pragma once

#include "app/base/MainThreadCalls.h"
#include "app/ports/DisplaySource.h"
#include "platform/linux/GraphicalSessions.h"

#include <functional>
#include <memory>

namespace tidemark {

/// The displays of the compositor in a Wayland session, else those of the X11 server. Inside of a
/// Wayland session an X11 server has made-up displays, so it is not asked.
class SessionDisplays final : public DisplaySource {
public:
    explicit SessionDisplays(
        std::function<void()> didChange,
        std::shared_ptr<GraphicalSessions> sessions = GraphicalSessions::ofProcess());

    std::optional<std::vector<ObservedDisplay>> displays() const override { return present; }

private:
    const std::function<void()> didChange;
    const std::shared_ptr<GraphicalSessions> sessions;
    std::optional<std::vector<ObservedDisplay>> present;
    MainThreadCalls calls;
    std::shared_ptr<void> reader;
};

} // namespace tidemark
