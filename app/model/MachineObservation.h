#pragma once

#include "app/model/ObservationFlow.h"

namespace tidemark {

class ComponentStorageScanner;

/// Returns a function that observes this machine in the background and reports the progress. Both
/// arguments must outlive all its observations.
Observe machineObservation(ComponentStorageScanner& scanner, CaptureProgress& progress);

} // namespace tidemark
