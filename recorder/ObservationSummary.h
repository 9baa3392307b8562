#pragma once

#include "core/records/Snapshot.h"

#include <string>

namespace tidemark {

/// An observation as text: the items found, sizes, folders that could not be read and why, and the
/// duration of each phase.
std::string observationSummary(const Snapshot& snapshot);

} // namespace tidemark
