#pragma once

#include "core/presentation/EventInspection.h"

#include <string>

namespace tidemark {

/// What is known of one event, for a terminal.
std::string textOf(const EventInspection& inspection, bool withColour);

} // namespace tidemark
