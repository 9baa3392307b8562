#include "core/growth/GapRows.h"

#include "core/base/Text.h"
#include "core/growth/StorageChartText.h"
#include "core/presentation/SystemWords.h"
#include "core/timeline/ObservationCoverage.h"

#include <algorithm>
#include <map>
#include <set>

namespace tidemark {

namespace {

using Reason = GapRow::Reason;

struct Period {
    Date start;
    Date end;

    /// Seconds of this period that are in the other one.
    double within(const Period& other) const {
        return std::max(0.0, std::min(end, other.end) - std::max(start, other.start));
    }
};
using Periods = std::vector<Period>;

/// The periods from each request to sleep to the next wake.
Periods sleepPeriods(const std::vector<Shared<SystemActivity>>& activity) {
    Periods periods;
    std::optional<Date> asleepSince;
    for (const auto& record : activity) {
        if (record->kind == SystemActivity::Kind::sleepRequested)
            asleepSince = record->timestamp;
        else if (record->kind == SystemActivity::Kind::woke && asleepSince) {
            periods.push_back({*asleepSince, record->timestamp});
            asleepSince.reset();
        }
    }
    return periods;
}

Periods pausePeriods(const std::vector<RecorderRun>& runs) {
    Periods periods;
    std::optional<Date> pausedSince;
    for (const auto& run : runs) {
        if (run.kind == RecorderRun::Kind::paused && !pausedSince)
            pausedSince = run.timestamp;
        if (run.kind == RecorderRun::Kind::resumed && pausedSince) {
            periods.push_back({*pausedSince, run.timestamp});
            pausedSince.reset();
        }
    }
    if (pausedSince)
        periods.push_back({*pausedSince, Date::distantFuture()});
    return periods;
}

/// The periods from each end of the program to its next start. If it ended without a record, for
/// example because it was killed, the period starts when it was last known to run.
Periods stopPeriods(const std::vector<RecorderRun>& runs) {
    Periods periods;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const bool isLast = i + 1 == runs.size();
        const bool isStop = runs[i].kind == RecorderRun::Kind::stopped;
        if (!isLast && runs[i + 1].kind == RecorderRun::Kind::started)
            periods.push_back({runs[i].timestamp, runs[i + 1].timestamp});
        else if (isLast && isStop)
            periods.push_back({runs[i].timestamp, Date::distantFuture()});
    }
    return periods;
}

double covered(const Periods& periods, const Period& gap) {
    double seconds = 0;
    for (const auto& period : periods)
        seconds += period.within(gap);
    return seconds;
}

/// Finds why nothing was observed in a time.
class Explanation {
public:
    explicit Explanation(const GapSource& source)
        : paused(pausePeriods(source.runs)), stopped(stopPeriods(source.runs)),
          asleep(sleepPeriods(source.activity)) {}

    Reason of(const Period& gap) const {
        Reason reason = Reason::unknown;
        double most = (gap.end - gap.start) / 2;
        const auto consider = [&](Reason candidate, const Periods& periods) {
            const double seconds = covered(periods, gap);
            const bool isMore = reason == Reason::unknown ? seconds >= most : seconds > most;
            if (isMore) {
                reason = candidate;
                most = seconds;
            }
        };
        consider(Reason::paused, paused);
        consider(Reason::notRunning, stopped);
        consider(Reason::asleep, asleep);
        return reason;
    }

private:
    Periods paused;
    Periods stopped;
    Periods asleep;
};

const char* sentenceOf(Reason reason) {
    switch (reason) {
    case Reason::asleep:
        return "The computer was asleep.";
    case Reason::notRunning:
        return "Tidemark was not running.";
    case Reason::paused:
        return "Recording was paused.";
    case Reason::unknown:
    case Reason::unreadable:
        break;
    }
    return "";
}

std::string timesOf(const GapRow& row, const Calendar& calendar) {
    using storageChartText::momentText;
    return momentText(row.start, calendar) + " – "
           + (row.isOngoing ? "now" : momentText(row.end, calendar));
}

GapRow finished(GapRow row, const Calendar& calendar) {
    row.times = timesOf(row, calendar);
    row.accessibleText = row.title + ", " + row.times;
    if (!row.explanation.empty())
        row.accessibleText += ", " + row.explanation;
    return row;
}

/// The ids of the events "Captures Resumed", by the time at which the captures resumed.
std::map<Date, std::string> resumptions(const std::vector<Shared<Event>>& events) {
    std::map<Date, std::string> ids;
    for (const auto& event : events)
        if (event->observationGap)
            ids.emplace(event->observationGap->end, event->id);
    return ids;
}

void addGaps(const GapSource& source, Date since, Date through, const Calendar& calendar,
             std::vector<GapRow>& rows) {
    const Explanation explanation(source);
    const auto events = resumptions(source.events);
    const auto report = ObservationCoverageReport::build(source.snapshots, since, through);
    for (const auto& gap : report.gaps) {
        GapRow row;
        row.start = gap.start;
        row.end = gap.end;
        row.isOngoing = gap.isOngoing;
        row.reason = explanation.of({gap.start, gap.end});
        row.title = "Nothing observed for " + storageChartText::lengthInWords(gap.end - gap.start);
        row.explanation = sentenceOf(row.reason);
        if (const auto event = events.find(gap.end); event != events.end() && !gap.isOngoing)
            row.eventID = event->second;
        rows.push_back(finished(std::move(row), calendar));
    }
}

/// A place that could not be read by one or more captures in succession.
struct Problem {
    std::string message;
    Date first;
    /// The capture that could read it again.
    std::optional<Date> end{};
};

std::vector<Problem> problems(const std::vector<Shared<Snapshot>>& snapshots, Date through) {
    std::vector<Problem> ended;
    /// The first capture with the problem, by its message.
    std::map<std::string, Date> running;
    for (const auto& snapshot : snapshots) {
        if (snapshot->timestamp > through)
            break;
        const std::set<std::string> now(snapshot->coverage.issues.begin(),
                                        snapshot->coverage.issues.end());
        std::erase_if(running, [&](const auto& each) {
            if (now.contains(each.first))
                return false;
            ended.push_back({each.first, each.second, snapshot->timestamp});
            return true;
        });
        for (const auto& message : now)
            running.try_emplace(message, snapshot->timestamp);
    }
    for (const auto& [message, first] : running)
        ended.push_back({message, first});
    return ended;
}

void addProblems(const GapSource& source, Date since, Date through, const Calendar& calendar,
                 std::vector<GapRow>& rows) {
    if (source.snapshots.empty())
        return;
    for (const auto& problem : problems(source.snapshots, through)) {
        const bool isOver = problem.end && *problem.end <= since;
        // A place that was never read in this time is no gap; the coverage report lists it.
        const bool isPermanent =
            !problem.end
            && (problem.first <= since || problem.first == source.snapshots.front()->timestamp);
        if (isOver || isPermanent)
            continue;
        GapRow row;
        row.start = problem.first;
        row.end = problem.end.value_or(through);
        row.isOngoing = !problem.end;
        row.reason = Reason::unreadable;
        row.title =
            "A place was not read for " + storageChartText::lengthInWords(row.end - row.start);
        row.explanation = oneLine(systemWords::shown(problem.message));
        rows.push_back(finished(std::move(row), calendar));
    }
}

} // namespace

std::vector<GapRow> gapRows(const GapSource& source, Date since, Date through,
                            const Calendar& calendar) {
    std::vector<GapRow> rows;
    addGaps(source, since, through, calendar, rows);
    addProblems(source, since, through, calendar, rows);
    std::ranges::stable_sort(rows, [](const GapRow& a, const GapRow& b) {
        return a.end != b.end ? a.end > b.end : a.start < b.start;
    });
    return rows;
}

} // namespace tidemark
