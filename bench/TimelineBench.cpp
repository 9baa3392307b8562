// Comparing two large snapshots, and rebuilding the list of events that is shown.

#include "bench/Generator.h"
#include "bench/Report.h"
#include "core/timeline/DiffEngine.h"
#include "core/timeline/TimelinePresentation.h"

using namespace tidemark;
using namespace tidemark::bench;

namespace {

constexpr int runs = 51;
constexpr std::size_t historyLength = 22'000;

void presentation(const char* what, std::string_view search, double bound) {
    const auto history = eventsOf(historyLength);
    const Calendar calendar;
    std::size_t shown = 0;
    const double median = medianOf(runs, [&] {
        return seconds([&] {
            shown = TimelinePresentation::build(history, Date::distantPast(), Date::distantFuture(),
                                                std::nullopt, std::nullopt, search, calendar)
                        .events.size();
        });
    });
    row(what + (", shows " + std::to_string(shown)), median * 1e3, "ms", bound);
}

} // namespace

int main() {
    const Snapshot before = snapshotOf(2000, 1000, 50, 500, 0);
    const Snapshot after = snapshotOf(2000, 1000, 50, 500, 1);
    std::size_t changes = 0;
    row("compare 2,000 applications, 1,000 items, 50 folders of 500",
        medianOf(
            runs,
            [&] { return seconds([&] { changes = DiffEngine::compare(before, after).size(); }); })
            * 1e3,
        "ms", 5);
    row("changes found", static_cast<double>(changes), "");
    presentation("presentation of 22,000 events", "", 5);
    presentation("presentation of 22,000 events, search", "application 17", 12);
    presentation("presentation of 22,000 events, search beyond ASCII", "Äpplication", 12);
}
