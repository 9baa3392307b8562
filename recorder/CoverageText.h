#pragma once

#include "core/journal/Journal.h"

#include <string>

namespace tidemark {

/// Gaps and access problems after `since`, until `now`, for people. A problem that several
/// captures met is told once.
std::string coverageText(const Journal& journal, Date since, Date now);

} // namespace tidemark
