#include "app/settings/LoginLaunchController.h"

#include <utility>

namespace tidemark {

LoginLaunchController::LoginLaunchController(Service service)
    : status(this, service.readStatus()), service(std::move(service)) {}

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
    status = service.readStatus();
    busy = false;
}

QCoro::Task<void> LoginLaunchController::change(bool on) {
    if (on)
        service.registerItem();
    else
        co_await service.unregisterItem();
}

} // namespace tidemark
