#pragma once

#include "app/ports/Clipboard.h"
#include "app/ports/DisplaySource.h"
#include "app/ports/SleepAndSessionSource.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tidemark {
class NotificationCenter;
}

/// Creates the implementations of the ports for this system. Each system defines these functions in
/// one source file, the only one that chooses its adapters.
namespace tidemark::systemServices {

/// `notifications` must outlive the source.
std::unique_ptr<SleepAndSessionSource> sleepAndSession(NotificationCenter& notifications,
                                                       SleepAndSessionSource::Settle settle);

/// Null where this release has none for the system.
std::unique_ptr<Clipboard> clipboard();
/// Why the clipboard can't be followed in the present session, as a sentence; absent when it can,
/// as far as that is known before it is followed. Empty where `clipboard` is null.
std::optional<std::string> clipboardAbsence();
std::unique_ptr<DisplaySource> displays(std::function<void()> didChange);

} // namespace tidemark::systemServices
