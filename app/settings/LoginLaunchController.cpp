#include "app/settings/LoginLaunchController.h"

#include <utility>

namespace tidemark {

LoginLaunchController::LoginLaunchController(std::unique_ptr<LoginItem> item)
    : status(this, item->status()), item(std::move(item)) {}

bool LoginLaunchController::enabled() const {
    return *status == ServiceStatus::enabled || *status == ServiceStatus::requiresApproval;
}

QCoro::Task<void> LoginLaunchController::setEnabled(bool on) {
    const auto hold = tasks.hold();
    if (busy)
        co_return;
    busy = true;
    error = std::nullopt;
    std::optional<std::string> failure;
    try {
        co_await change(on);
    } catch (const std::exception& thrown) {
        failure = thrown.what();
    }
    error = std::move(failure);
    status = item->status();
    busy = false;
}

QCoro::Task<void> LoginLaunchController::change(bool on) {
    if (on)
        item->add();
    else
        co_await item->remove();
}

} // namespace tidemark
