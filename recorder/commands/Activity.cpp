#include "recorder/Commands.h"
#include "recorder/HistoryTime.h"
#include "recorder/TypedInvocation.h"

#include <ranges>

namespace tidemark {

namespace {

struct ActivityOptions {
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{
            Option{"json", &ActivityOptions::json, "Print stored JSON instead of text"}};
    }
};

std::string activity(const HistoryReading& reading, const ActivityOptions& options) {
    // A file that can't be read is not an empty one.
    if (reading.history.activityProblem)
        throw Error(*reading.history.activityProblem);
    const auto& records = reading.history.activity;
    if (options.json)
        return json::encoded(records) + "\n";
    std::string out;
    const Calendar calendar;
    for (const auto& record : std::views::reverse(records))
        out += historyTime::moment(record->timestamp, "", calendar) + "  "
               + oneLine(systemWords::shown(record->title())) + "  "
               + oneLine(systemWords::shown(record->detailSubtitle())) + "\n";
    return out.empty() ? "No activity has been recorded.\n" : out;
}

} // namespace

Command commands::activity() {
    return makeCommand<ActivityOptions, &tidemark::activity>({
        .name = "activity",
        .group = CommandGroup::history,
        .summary = "List sleep, power, network and device changes recorded live",
    });
}

} // namespace tidemark
