#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"
#include "core/base/Text.h"

namespace tidemark {

/// A period without saved captures.
struct ObservationGap {
    Date start;
    Date end;
    /// The gap had not ended by the end of the requested period.
    bool isOngoing = false;

    std::string id() const {
        return shortestText(start.secondsSince1970()) + "-" + shortestText(end.secondsSince1970());
    }

    bool operator==(const ObservationGap&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"start", &ObservationGap::start},
            Field{"end", &ObservationGap::end},
            Field{"isOngoing", &ObservationGap::isOngoing},
        };
    }
};

} // namespace tidemark
