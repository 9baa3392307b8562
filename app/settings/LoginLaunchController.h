#pragma once

#include "app/base/Published.h"
#include "app/base/TaskScope.h"

#include <QCoroTask>
#include <functional>
#include <optional>
#include <string>

namespace tidemark {

/// Shows and changes whether the system starts the program when the user logs in. Main thread only.
class LoginLaunchController : public Observable {
    Q_OBJECT

public:
    enum class ServiceStatus { notRegistered, enabled, requiresApproval, notFound };

    /// The functions of the system. `registerItem` and `unregisterItem` throw `Error`.
    struct Service {
        std::function<ServiceStatus()> readStatus;
        std::function<void()> registerItem;
        std::function<QCoro::Task<void>()> unregisterItem;
    };

    explicit LoginLaunchController(Service service);

    Published<ServiceStatus> status;
    /// Why the last change failed.
    Published<std::optional<std::string>> error{this};
    /// True while a change is being made.
    Published<bool> busy{this};

    /// True when the user turned it on, even if it still needs approval in the system's settings.
    bool enabled() const;
    /// Does nothing while `busy`.
    QCoro::Task<void> setEnabled(bool on);

private:
    QCoro::Task<void> change(bool on);

    const Service service;
    TaskScope tasks;
};

} // namespace tidemark
