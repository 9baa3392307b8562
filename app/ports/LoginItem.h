#pragma once

#include <QCoroTask>
#include <filesystem>
#include <optional>

namespace tidemark {

/// The entry by which the system starts the program when the user logs in. Main thread only.
class LoginItem {
public:
    enum class Status {
        notRegistered,
        enabled,
        /// Registered, but turned off in the settings of the system.
        requiresApproval,
        /// Registered with a program that does not exist.
        notFound,
    };

    virtual ~LoginItem() = default;

    virtual Status status() const = 0;
    /// Registers the program. What the user has turned off in the settings of the system stays off.
    /// This and `remove` throw `Error`.
    virtual void add() = 0;
    virtual QCoro::Task<void> remove() = 0;
    /// The file of the user that holds the entry, whether it exists or not; absent where the system
    /// keeps it elsewhere.
    virtual std::optional<std::filesystem::path> file() const { return std::nullopt; }
};

} // namespace tidemark
