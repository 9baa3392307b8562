#include "app/settings/UpdateController.h"

#include <utility>

namespace tidemark {

UpdateController::UpdateController(Bundle bundle, Framework framework,
                                   std::function<bool()> captureBusy)
    : bundle(std::move(bundle)), framework(std::move(framework)),
      captureBusy(std::move(captureBusy)) {}

void UpdateController::start() {
    if (connected || bundle.identifier != updatingBuild || !bundle.publicKey)
        return;
    available = true;
    try {
        framework.start();
    } catch (const std::exception& thrown) {
        error = thrown.what();
        return;
    }
    error = std::nullopt;
    connected = true;
    refresh();
}

void UpdateController::refresh() {
    if (!connected)
        return;
    canCheck = framework.canCheck();
    automaticChecks = framework.automaticChecks();
    automaticDownloads = framework.automaticDownloads();
}

void UpdateController::checkForUpdates() {
    if (connected && canCheck)
        framework.checkForUpdates();
}

void UpdateController::setAutomaticChecks(bool on) {
    if (!connected)
        return;
    framework.setAutomaticChecks(on);
    refresh();
}

void UpdateController::setAutomaticDownloads(bool on) {
    if (!connected)
        return;
    framework.setAutomaticDownloads(on);
    refresh();
}

bool UpdateController::postponeRelaunch(std::function<void()> relaunch) {
    if (!captureBusy())
        return false;
    postponed = std::move(relaunch);
    return true;
}

void UpdateController::captureEnded() {
    if (!postponed || captureBusy())
        return;
    std::exchange(postponed, nullptr)();
}

} // namespace tidemark
