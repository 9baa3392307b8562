#include "app/model/MachineObservation.h"

#include "app/base/Background.h"
#include "core/capture/SystemObserver.h"
#include "core/packages/PackageIndex.h"
#include "core/storage/ComponentStorageScanner.h"

#include <memory>

namespace tidemark {

Observe machineObservation(ComponentStorageScanner& scanner, CaptureProgress& progress) {
    const auto packages = std::make_shared<PackageIndex>();
    return [&scanner, &progress, packages](ObservationOptions options, std::stop_token stop) {
        const auto tell = [&progress](const std::string& text) {
            QMetaObject::invokeMethod(
                &progress, [&progress, text] { progress.stage = text; }, Qt::QueuedConnection);
        };
        const auto observe = [options = std::move(options), tell, &scanner,
                              packages](const std::stop_token& stopped) {
            return SystemObserver::captureProgressively(options, &scanner, tell, Clock::system(),
                                                        stopped, packages.get());
        };
        return runInBackground(observe, std::move(stop));
    };
}

} // namespace tidemark
