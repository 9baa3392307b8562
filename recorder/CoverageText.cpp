#include "recorder/CoverageText.h"

#include "core/base/Text.h"
#include "core/presentation/CoverageList.h"
#include "recorder/HistoryTime.h"

#include <algorithm>

namespace tidemark {

namespace {

/// Why nothing was observed, for each gap; empty where that is not known.
std::vector<std::string> reasonsOf(const ObservationCoverageReport& report,
                                   const std::vector<GapRow>& rows) {
    std::vector<std::string> reasons;
    for (const auto& gap : report.gaps) {
        const auto row = std::ranges::find_if(rows, [&](const GapRow& each) {
            return each.start == gap.start && each.reason != GapRow::Reason::unreadable;
        });
        reasons.push_back(row == rows.end() ? std::string() : row->explanation);
    }
    return reasons;
}

std::string listText(const CoverageList& list, const std::vector<std::string>& reasons) {
    std::string out;
    for (std::size_t i = 0; i < list.gaps.size(); ++i) {
        out += "No capture  " + list.gaps[i].when + "\n";
        if (!reasons[i].empty())
            out += "            " + reasons[i] + "\n";
    }
    for (const auto& problem : list.problems)
        out += "Not seen    " + problem.when + "\n            " + oneLine(problem.message) + "\n";
    return out;
}

/// A line about the captures dated after `now`, which were made while the clock was ahead and are
/// not part of the report.
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

std::string coverageText(const GapSource& source, Date since, Date now) {
    if (source.snapshots.empty())
        return "No capture has been taken yet.\n";
    if (since > now)
        return "That time has not come yet.\n";
    std::vector<Date> future;
    for (const auto& snapshot : source.snapshots)
        if (snapshot->timestamp > now)
            future.push_back(snapshot->timestamp);
    const Calendar calendar;
    const auto report = ObservationCoverageReport::build(source.snapshots, since, now);
    std::string out = futureLine(future, calendar)
                      + listText(CoverageList::of(report, calendar),
                                 reasonsOf(report, gapRows(source, since, now, calendar)));
    if (!out.empty())
        return out;
    return "Every place was seen at every capture that was due.\n";
}

} // namespace tidemark
