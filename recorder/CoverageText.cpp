#include "recorder/CoverageText.h"

#include "core/base/Text.h"
#include "core/timeline/ObservationCoverage.h"
#include "recorder/HistoryTime.h"

#include <algorithm>
#include <map>

namespace tidemark {

namespace {

/// A period of captures with the same problem.
struct Spell {
    Date first;
    Date last;
    std::size_t captures = 0;
};

std::string problemLine(const std::string& message, const Spell& spell, const Calendar& calendar) {
    std::string when = historyTime::moment(spell.first, "", calendar);
    if (spell.captures > 1)
        when += " – " + historyTime::moment(spell.last, "", calendar) + ", "
                + std::to_string(spell.captures) + " captures";
    return "Not seen    " + when + "\n            " + oneLine(message) + "\n";
}

std::string problemLines(const ObservationCoverageReport& report, const Calendar& calendar) {
    std::map<std::string, Spell> problems;
    for (const auto& issue : report.accessIssues) {
        auto& spell =
            problems.try_emplace(issue.message, Spell{issue.timestamp, {}, 0}).first->second;
        spell.last = issue.timestamp;
        ++spell.captures;
    }
    std::string out;
    for (const auto& [message, spell] : problems)
        out += problemLine(message, spell, calendar);
    return out;
}

std::string gapLines(const ObservationCoverageReport& report, const Calendar& calendar) {
    std::string out;
    for (const auto& gap : report.gaps)
        out += "No capture  " + historyTime::moment(gap.start, "", calendar) + " – "
               + (gap.isOngoing ? "now" : historyTime::moment(gap.end, "", calendar)) + "\n";
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
    std::string out =
        futureLine(future, calendar) + gapLines(report, calendar) + problemLines(report, calendar);
    if (!out.empty())
        return out;
    return "Every place was seen at every capture that was due.\n";
}

} // namespace tidemark
