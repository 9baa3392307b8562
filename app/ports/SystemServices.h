#pragma once

#include "app/ports/SleepAndSessionSource.h"

#include <memory>

namespace tidemark {
class NotificationCenter;
}

/// The services of the operating system behind the ports of the application. Each system
/// implements these functions in one source, the only one that chooses among its adapters.
namespace tidemark::systemServices {

/// The center must outlive the source.
std::unique_ptr<SleepAndSessionSource> sleepAndSession(NotificationCenter& notifications,
                                                       SleepAndSessionSource::Settle settle);

} // namespace tidemark::systemServices
