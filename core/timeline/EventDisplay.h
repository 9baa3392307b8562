#pragma once

#include "core/records/Event.h"

#include <string>

namespace tidemark {

/// The headline of an event. It is made from the payload each time, so that events stored by older
/// releases get the present wording. The stored title is shown for events without a payload, and
/// for two kinds whose payload does not have everything that the title says: new background items
/// that belong to an application, and items of additional sources.
std::string displayTitle(const Event& event);

/// The title of a new background item that belongs to an application.
std::string newBackgroundItemTitle(std::string_view application);

/// The second line of an event: for free space made from the payload, else the stored one.
std::string displaySubtitle(const Event& event);

} // namespace tidemark
