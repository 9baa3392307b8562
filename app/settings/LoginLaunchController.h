#pragma once

#include "app/base/Published.h"
#include "app/base/TaskScope.h"

#include <QCoroTask>
#include <functional>
#include <optional>
#include <string>

namespace tidemark {

/// Whether the program starts when the user logs in, as the system keeps it, and the switch for
/// it. Main thread only.
class LoginLaunchController : public Observable {
    Q_OBJECT

public:
    enum class ServiceStatus { notRegistered, enabled, requiresApproval, notFound };

    /// What the system offers for it. `registerItem` and `unregisterItem` throw `Error`.
    struct Service {
        std::function<ServiceStatus()> readStatus;
        std::function<void()> registerItem;
        std::function<QCoro::Task<void>()> unregisterItem;
    };

    explicit LoginLaunchController(Service used);

    Published<ServiceStatus> status;
    /// Why the last change failed.
    Published<std::optional<std::string>> error{this};
    /// A change is under way.
    Published<bool> busy{this};

    /// The user wants it, even if the system still has to be told to allow it.
    bool enabled() const;
    /// Does nothing while `busy`.
    QCoro::Task<void> setEnabled(bool on);

private:
    QCoro::Task<void> change(bool on);

    const Service service;
    TaskScope tasks;
};

} // namespace tidemark
