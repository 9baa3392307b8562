#pragma once

#include "app/model/ObservationFlow.h"

namespace tidemark {

class ComponentStorageScanner;

/// Observes this machine in the background and reports the progress. Both arguments must outlive
/// all observations.
Observe machineObservation(ComponentStorageScanner& scanner, CaptureProgress& progress);

} // namespace tidemark
