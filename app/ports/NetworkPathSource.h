#pragma once

#include "core/records/ConnectionActivity.h"

#include <functional>

namespace tidemark {

/// Follows how this machine reaches other networks. Main thread only.
class NetworkPathSource {
public:
    using Receive = std::function<void(const NetworkConnectionState& state)>;

    virtual ~NetworkPathSource() = default;

    /// Starts to follow: calls `receive` from the event loop with the present state, and again
    /// after changes; also with equal states. Returns false when changes can't be followed.
    /// `receive` must not destroy the source.
    virtual bool start(Receive receive) = 0;
    virtual void stop() = 0;
};

} // namespace tidemark
