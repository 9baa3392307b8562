#include "recorder/CoverageText.h"

#include "core/base/Text.h"
#include "core/timeline/ObservationCoverage.h"
#include "recorder/HistoryTime.h"

#include <algorithm>
#include <map>

namespace tidemark {

namespace {

/// The captures that met one problem.
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

} // namespace

std::string coverageText(const Journal& journal, Date since, Date now) {
    if (journal.snapshots.empty())
        return "No capture has been taken yet.\n";
    const auto report = ObservationCoverageReport::build(journal.snapshots, since, now);
    if (report.gaps.empty() && report.accessIssues.empty())
        return "Every place was seen at every capture that was due.\n";
    const Calendar calendar;
    std::string out;
    for (const auto& gap : report.gaps)
        out += "No capture  " + historyTime::moment(gap.start, "", calendar) + " – "
               + (gap.isOngoing ? "now" : historyTime::moment(gap.end, "", calendar)) + "\n";
    std::map<std::string, Spell> problems;
    for (const auto& issue : report.accessIssues) {
        auto& spell =
            problems.try_emplace(issue.message, Spell{issue.timestamp, {}, 0}).first->second;
        spell.last = issue.timestamp;
        ++spell.captures;
    }
    for (const auto& [message, spell] : problems)
        out += problemLine(message, spell, calendar);
    return out;
}

} // namespace tidemark
