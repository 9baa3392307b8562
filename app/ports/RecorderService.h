#pragma once

#include <cstdint>
#include <string>

namespace tidemark {

/// The recorder without windows as a service, which the system starts with the user's session. For
/// programs without an event loop: each function except `isEnabledByFiles` blocks until the system
/// has answered, and throws `Error` when the system can't do it or has no such service.
class RecorderService {
public:
    enum class Activity { stopped, starting, running, failed };

    struct Status {
        bool startsWithSession = false;
        Activity activity = Activity::stopped;
        /// The number of its process; 0 while it has none.
        std::int64_t process = 0;
    };

    virtual ~RecorderService() = default;

    virtual Status status() const = 0;
    /// Whether the user's files say that it starts with the session; also known where the system
    /// does not answer. Does not throw.
    virtual bool isEnabledByFiles() const = 0;
    /// Starts it now and with each session.
    virtual void enable() = 0;
    /// Ends it now and starts it with no session.
    virtual void disable() = 0;
};

} // namespace tidemark
