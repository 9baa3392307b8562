#pragma once

#include "core/records/Event.h"

#include <vector>

namespace tidemark {

/// The events of all sources, newest first, as the two lists from which views are made. Not changed
/// once made, so that it can be searched in the background.
struct MergedHistory {
    std::vector<Shared<Event>> full;
    /// All events except the application foreground times that earlier releases recorded.
    std::vector<Shared<Event>> events;
    /// `events` without files, downloads and clips, which have places of their own.
    std::vector<Shared<Event>> timeline;

    /// Merges the events of all sources, given in any order.
    static MergedHistory of(std::vector<Shared<Event>> events);
    /// A copy without the events in `removed`, which must be objects of this history, and with
    /// `added`, both in any order. Fast for few events: their positions are looked up, and the
    /// lists are not sorted again.
    MergedHistory changed(std::vector<Shared<Event>> removed,
                          std::vector<Shared<Event>> added) const;
};

} // namespace tidemark
