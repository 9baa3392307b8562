#pragma once

#include <QCoroTask>
#include <optional>
#include <string>

namespace tidemark {

/// What records while the program runs, besides captures: the monitors of the machine's activity
/// and the memory history. The controller says when; it runs without any as well.
class LiveServices {
public:
    virtual ~LiveServices() = default;

    /// Reads the memory history. Throws when its file can't be read; it is not touched then.
    virtual QCoro::Task<void> loadMemory() = 0;
    virtual void startActivityMonitors() = 0;
    virtual void startMemory() = 0;
    /// Ends all recording, for a pause or at the end.
    virtual void stop() = 0;
    /// Set when the memory history had to stop by itself.
    virtual std::optional<std::string> memoryFailure() const = 0;
};

} // namespace tidemark
