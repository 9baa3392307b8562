#pragma once

#include <QCoroTask>
#include <optional>
#include <string>

namespace tidemark {

/// Everything that records while the program runs, except captures: the monitors of live activity
/// and the memory history. Started and stopped by the controller.
class LiveServices {
public:
    virtual ~LiveServices() = default;

    /// Reads the memory history. Throws when its file can't be read; the file is unchanged then.
    virtual QCoro::Task<void> loadMemory() = 0;
    virtual void startActivityMonitors() = 0;
    virtual void startMemory() = 0;
    /// Stops the monitors and the memory history, for a pause or at the end of the program.
    virtual void stop() = 0;
    /// Set when the memory history has stopped after a failure.
    virtual std::optional<std::string> memoryFailure() const = 0;
};

} // namespace tidemark
