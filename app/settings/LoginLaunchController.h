#pragma once

#include "app/base/Published.h"
#include "app/base/TaskScope.h"
#include "app/ports/LoginItem.h"

#include <QCoroTask>
#include <memory>
#include <optional>
#include <string>

namespace tidemark {

/// Shows and changes whether the system starts the program when the user logs in. Main thread only.
class LoginLaunchController : public Observable {
    Q_OBJECT

public:
    using ServiceStatus = LoginItem::Status;

    explicit LoginLaunchController(std::unique_ptr<LoginItem> item);

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

    const std::unique_ptr<LoginItem> item;
    TaskScope tasks;
};

} // namespace tidemark
