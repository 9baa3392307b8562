#pragma once

#include "core/records/Event.h"

#include <vector>

namespace tidemark {

/// The events of all sources in one order, newest first, and the two lists that screens start
/// from. Immutable once made, so that it can be searched in the background.
struct MergedHistory {
    std::vector<Shared<Event>> full;
    /// Without the foreground times that earlier releases recorded.
    std::vector<Shared<Event>> events;
    /// Of those, without what has a place of its own: files, downloads and clips.
    std::vector<Shared<Event>> timeline;

    /// Of the events of all sources, in any order.
    static MergedHistory of(std::vector<Shared<Event>> events);
    /// The same without those of `removed`, which are objects of this one, and with `added`, both
    /// in any order. For few of them: their places are looked up, and nothing is sorted.
    MergedHistory changed(std::vector<Shared<Event>> removed,
                          std::vector<Shared<Event>> added) const;
};

} // namespace tidemark
