#pragma once

#include "core/journal/Journal.h"

#include <string>

namespace tidemark {

/// The gaps and access problems after `since` until `now`, as text. A problem of several captures
/// is reported once.
std::string coverageText(const Journal& journal, Date since, Date now);

} // namespace tidemark
