#include "recorder/EventAnswer.h"

#include "core/base/JsonEncoder.h"
#include "recorder/TimelinePrinter.h"

namespace tidemark {

std::string eventAnswer(const std::vector<Shared<Event>>& events, const HistoryReading& reading,
                        EventAnswerForm form, const char* nothing) {
    if (form.asJson)
        return json::encoded(events) + "\n";
    if (events.empty())
        return nothing;
    return TimelinePrinter(Calendar(), reading.colour, form.withIDs).text(events);
}

} // namespace tidemark
