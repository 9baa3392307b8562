#pragma once

#include "core/base/Clock.h"
#include "core/capture/ObservationOptions.h"
#include "core/records/Snapshot.h"

#include <functional>
#include <stop_token>
#include <string>

namespace tidemark {

class ComponentStorageScanner;
class PackageIndex;

/// Takes one observation of the machine, on the calling thread. Stateless. Does not throw: each
/// problem becomes a sentence in the snapshot's coverage; a size that could not be measured is
/// missing or, with a scanner, may be an earlier one. A capture that is stopped also returns a
/// snapshot, with its unfinished parts marked incomplete. Fields that only the caller knows (the
/// operating system, additional reports, when the next capture is due) are left absent.
namespace SystemObserver {

/// Seconds that all measuring of a progressive capture may take, after the inventory.
inline constexpr double storageBudget = 90;
/// Seconds of the `storageBudget` that one root may take.
inline constexpr double rootBudget = 30;

/// Called before each phase of a capture, with its description.
using Progress = std::function<void(const std::string& text)>;
/// The descriptions of the first and of the last phase. The last one begins when the snapshot is
/// complete; the caller saves it.
inline constexpr const char* inventoryPhase = "Scanning Applications and Background Items…";
inline constexpr const char* savingPhase = "Saving Observation…";

/// The inventory of applications and background items, and the sizes of small storage roots.
Snapshot capture(const ObservationOptions& options, Clock& clock = Clock::system(),
                 const std::stop_token& stop = {});

/// The inventory, then the sizes of folders and of application bundles, within `storageBudget`.
/// With `scanner`, the next capture continues walks that did not finish, and application bundles
/// are measured one by one; without it, a root that is not walked completely in this capture has no
/// size. `packages` is kept from one capture to the next, so that the databases of packages are
/// read only when they changed.
Snapshot captureProgressively(const ObservationOptions& options, ComponentStorageScanner* scanner,
                              const Progress& progress, Clock& clock = Clock::system(),
                              const std::stop_token& stop = {}, PackageIndex* packages = nullptr);

} // namespace SystemObserver

} // namespace tidemark
