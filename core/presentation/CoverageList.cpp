#include "core/presentation/CoverageList.h"

#include "core/presentation/Inspection.h"
#include "core/presentation/SystemWords.h"

#include <map>

namespace tidemark {

namespace {

/// The captures that met one problem.
struct Spell {
    Date first;
    Date last;
    std::size_t captures = 0;
};

std::map<std::string, Spell> spellsOf(const ObservationCoverageReport& report) {
    std::map<std::string, Spell> spells;
    for (const auto& issue : report.accessIssues) {
        auto& spell =
            spells.try_emplace(issue.message, Spell{issue.timestamp, {}, 0}).first->second;
        spell.last = issue.timestamp;
        ++spell.captures;
    }
    return spells;
}

} // namespace

CoverageList CoverageList::of(const ObservationCoverageReport& report, const Calendar& calendar) {
    const auto moment = [&](Date date) { return inspectionText::moment(date, calendar); };
    CoverageList list;
    for (const auto& gap : report.gaps)
        list.gaps.push_back(
            {moment(gap.start) + " – " + (gap.isOngoing ? "now" : moment(gap.end)), gap.isOngoing});
    for (const auto& [message, spell] : spellsOf(report)) {
        std::string when = moment(spell.first);
        if (spell.captures > 1)
            when +=
                " – " + moment(spell.last) + ", " + std::to_string(spell.captures) + " captures";
        list.problems.push_back({systemWords::shown(message), std::move(when)});
    }
    return list;
}

} // namespace tidemark
