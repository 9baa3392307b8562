#include "recorder/EventAnswer.h"

#include "core/base/JsonEncoder.h"
#include "recorder/TimelinePrinter.h"

namespace tidemark {

std::string eventAnswer(const std::vector<Shared<Event>>& events, const HistoryReading& reading,
                        bool asJson, const char* nothing) {
    if (asJson)
        return json::encoded(events) + "\n";
    return events.empty() ? nothing : TimelinePrinter(Calendar(), reading.colour).text(events);
}

} // namespace tidemark
