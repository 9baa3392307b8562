#pragma once

#include "app/ports/SleepAndSessionSource.h"

#include <memory>

namespace tidemark {
class NotificationCenter;
}

/// Creates the implementations of the ports for this system. Each system defines these functions in
/// one source file, the only one that chooses its adapters.
namespace tidemark::systemServices {

/// `notifications` must outlive the source.
std::unique_ptr<SleepAndSessionSource> sleepAndSession(NotificationCenter& notifications,
                                                       SleepAndSessionSource::Settle settle);

} // namespace tidemark::systemServices
