#pragma once

#include "core/records/Event.h"

#include <string>

namespace tidemark {

/// The headline that a screen shows. Made anew from the event's payload, so that titles stored by
/// an older release come out in the present wording.
std::string displayTitle(const Event& event);

/// The second line that a screen shows.
std::string displaySubtitle(const Event& event);

} // namespace tidemark
