#pragma once

#include "app/model/ObservationFlow.h"

namespace tidemark {

class ComponentStorageScanner;

/// The observation of this machine, in the background, with its progress told as it goes. Both
/// outlive all that it starts.
Observe machineObservation(ComponentStorageScanner& scanner, CaptureProgress& progress);

} // namespace tidemark
