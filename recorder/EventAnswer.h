#pragma once

#include "core/base/Shared.h"
#include "core/records/Event.h"
#include "recorder/HistoryReading.h"

#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The help of the option that sets `EventAnswerForm::withIDs`.
inline constexpr std::string_view eventIDsHelp = "Show each event's identifier, for tidemark show";

/// The form of the output of a command that lists events: a timeline as text, or stored JSON.
struct EventAnswerForm {
    bool asJson = false;
    bool withIDs = false;
};

/// The output of a command that lists events; `nothing` if there are none.
std::string eventAnswer(const std::vector<Shared<Event>>& events, const HistoryReading& reading,
                        EventAnswerForm form, const char* nothing);

} // namespace tidemark
