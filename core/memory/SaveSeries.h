#pragma once

#include "core/base/Shared.h"
#include "core/records/MemoryRecord.h"

#include <span>
#include <vector>

namespace tidemark {

/// Combines the records of a file that is saved or used again and again. A program that saves every
/// few seconds would fill the history within a day otherwise. The record of a series has the time
/// of its last save as `timestamp` and that of its first one as `observedAt`.
namespace SaveSeries {

/// The most seconds between two saves of one series, and from its first to its last save.
inline constexpr double mostPause = 600;
inline constexpr double mostLength = 3600;

/// The records of `found`; those that continue a series have the identifier of its record in
/// `stored`, so that they replace it. `stored` has the newest records first.
std::vector<MemoryRecord> continued(std::span<const Shared<MemoryRecord>> stored,
                                    std::vector<MemoryRecord> found);

} // namespace SaveSeries

} // namespace tidemark
