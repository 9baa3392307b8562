#include "app/model/MachineObservation.h"

#include "app/base/Background.h"
#include "core/capture/SystemObserver.h"
#include "core/storage/ComponentStorageScanner.h"

namespace tidemark {

Observe machineObservation(ComponentStorageScanner& scanner, CaptureProgress& progress) {
    return [&scanner, &progress](ObservationOptions options, std::stop_token stop) {
        const auto tell = [&progress](const std::string& text) {
            QMetaObject::invokeMethod(
                &progress, [&progress, text] { progress.stage = text; }, Qt::QueuedConnection);
        };
        const auto observe = [options, tell, &scanner](const std::stop_token& stopped) {
            return SystemObserver::captureProgressively(options, &scanner, tell, Clock::system(),
                                                        stopped);
        };
        return runInBackground(observe, std::move(stop));
    };
}

} // namespace tidemark
