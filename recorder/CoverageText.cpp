#include "recorder/CoverageText.h"

#include "core/base/Text.h"
#include "core/presentation/CoverageList.h"
#include "recorder/HistoryTime.h"

#include <algorithm>

namespace tidemark {

namespace {

std::string listText(const CoverageList& list) {
    std::string out;
    for (const auto& gap : list.gaps)
        out += "No capture  " + gap.when + "\n";
    for (const auto& problem : list.problems)
        out += "Not seen    " + problem.when + "\n            " + oneLine(problem.message) + "\n";
    return out;
}

/// Captures dated after `now`, made when the clock was ahead, are not part of the report.
std::string futureLine(const std::vector<Date>& future, const Calendar& calendar) {
    if (future.empty())
        return {};
    const std::string last = historyTime::moment(*std::ranges::max_element(future), "", calendar);
    return "Not judged  "
           + (future.size() == 1 ? "1 capture, which is dated "
                                 : std::to_string(future.size()) + " captures, dated up to ")
           + last + ", in the future\n";
}

} // namespace

std::string coverageText(const Journal& journal, Date since, Date now) {
    if (journal.snapshots.empty())
        return "No capture has been taken yet.\n";
    if (since > now)
        return "That time has not come yet.\n";
    std::vector<Date> future;
    for (const auto& snapshot : journal.snapshots)
        if (snapshot->timestamp > now)
            future.push_back(snapshot->timestamp);
    const Calendar calendar;
    const auto report = ObservationCoverageReport::build(journal.snapshots, since, now);
    const std::string out =
        futureLine(future, calendar) + listText(CoverageList::of(report, calendar));
    if (!out.empty())
        return out;
    return "Every place was seen at every capture that was due.\n";
}

} // namespace tidemark
