#pragma once

#include "core/growth/GapRows.h"

#include <string>

namespace tidemark {

/// The gaps after `since` until `now`, with the reason where it is known, and the access problems,
/// as text. A problem of several captures is reported once.
std::string coverageText(const GapSource& source, Date since, Date now);

} // namespace tidemark
