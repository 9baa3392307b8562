#pragma once

#include "core/base/Shared.h"
#include "core/records/Event.h"
#include "recorder/HistoryReading.h"

#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// Of the option that sets `EventAnswerForm::withIDs`.
inline constexpr std::string_view eventIDsHelp = "Show each event's identifier, for tidemark show";

/// The form of an answer that consists of events: a timeline for people, or stored JSON.
struct EventAnswerForm {
    bool asJson = false;
    bool withIDs = false;
};

/// Events as the answer of a command; `nothing` where there are none.
std::string eventAnswer(const std::vector<Shared<Event>>& events, const HistoryReading& reading,
                        EventAnswerForm form, const char* nothing);

} // namespace tidemark
