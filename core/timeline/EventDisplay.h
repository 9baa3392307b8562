#pragma once

#include "core/records/Event.h"

#include <string>

namespace tidemark {

/// The headline that a screen shows, and the only place that words one for a change. Made anew from
/// the event's payload, so that titles stored by an older release come out in the present wording.
/// Only of what the payload does not hold is the stored title shown: the application that a new
/// background item belongs to, and what became of an item of an additional source.
std::string displayTitle(const Event& event);

/// The title of a new background item that belongs to an application.
std::string newBackgroundItemTitle(std::string_view application);

/// The second line that a screen shows.
std::string displaySubtitle(const Event& event);

} // namespace tidemark
