#pragma once

#include "core/base/Clock.h"
#include "core/capture/ObservationOptions.h"
#include "core/records/Snapshot.h"

#include <functional>
#include <stop_token>
#include <string>

namespace tidemark {

class ComponentStorageScanner;

/// Takes one observation of the machine. No state, and no failure: each problem is a sentence in
/// the snapshot's coverage, and the size in question is missing. Works on the caller's thread; a
/// capture that is stopped still gives a snapshot, whose unfinished parts say so. What the caller
/// alone knows (the operating system, additional reports, when the next capture is due) is left
/// absent.
namespace SystemObserver {

/// Seconds that all measuring of a progressive capture may take, after the inventory.
inline constexpr double storageBudget = 90;
/// Seconds that one root may take of them.
inline constexpr double rootBudget = 30;

/// Is told what the capture is doing, before it does it.
using Progress = std::function<void(const std::string& text)>;

/// The plain inventory, with a quick measurement of small storage roots.
Snapshot capture(const ObservationOptions& options, Clock& clock = Clock::system(),
                 const std::stop_token& stop = {});

/// The inventory, then the sizes of folders and of application bundles under a shared budget of
/// time. With `applicationStorage` sizes are measured across captures and application bundles one
/// by one; without, each root is walked whole or not at all.
Snapshot captureProgressively(const ObservationOptions& options,
                              ComponentStorageScanner* applicationStorage, const Progress& progress,
                              Clock& clock = Clock::system(), const std::stop_token& stop = {});

} // namespace SystemObserver

} // namespace tidemark
