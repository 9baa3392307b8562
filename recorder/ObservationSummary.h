#pragma once

#include "core/records/Snapshot.h"

#include <string>

namespace tidemark {

/// An observation for people: what was found, sizes, what could not be seen and why, and how long
/// each phase took.
std::string observationSummary(const Snapshot& snapshot);

} // namespace tidemark
