#pragma once

#include "core/records/Snapshot.h"

#include <string>

namespace tidemark {

/// An observation as text: the system, how many items were found, sizes and free space, folders
/// that could not be read and why, notes, and the duration of each phase.
std::string observationSummary(const Snapshot& snapshot);

} // namespace tidemark
