#include "cli/recorder/HistoryText.h"

#include "app/capture/CaptureSchedule.h"
#include "cli/Console.h"
#include "cli/TimelinePrinter.h"
#include "core/base/Error.h"
#include "core/timeline/ObservationCoverage.h"
#include "core/timeline/TimelinePresentation.h"

#include <algorithm>
#include <charconv>
#include <ctime>

namespace tidemark::historyText {

namespace {

constexpr double hour = 3600;
constexpr double day = 86'400;

std::optional<double> secondsOf(char unit) {
    switch (unit) {
    case 'h':
        return hour;
    case 'd':
        return day;
    case 'w':
        return 7 * day;
    default:
        return std::nullopt;
    }
}

/// "2026-05-31" as local midnight, by the rules of the C library's time zone.
std::optional<Date> localMidnight(const std::string& text) {
    std::tm fields{};
    const char* end = ::strptime(text.c_str(), "%Y-%m-%d", &fields);
    if (!end || *end)
        return std::nullopt;
    fields.tm_isdst = -1;
    const std::time_t time = std::mktime(&fields);
    return time == -1 ? std::nullopt : std::optional(Date::fromUnix(static_cast<double>(time)));
}

std::string moment(std::optional<Date> date, const char* absent) {
    return date ? Calendar().format(*date, "d MMM yyyy, HH:mm:ss") : absent;
}

void line(std::string& out, const std::string& label, const std::string& value) {
    out += label + std::string(16 - std::min<std::size_t>(label.size(), 15), ' ') + oneLine(value)
           + "\n";
}

std::string joined(const FolderPurposes& purposes) {
    std::string text;
    for (const FolderPurpose purpose : purposes)
        text += (text.empty() ? "" : ", ") + std::string(rawValue(purpose));
    return text.empty() ? "nothing" : text;
}

} // namespace

Date sinceDate(const std::string& text, Date now) {
    if (text.empty())
        return Date::distantPast();
    double count = 0;
    const char* end = text.data() + text.size();
    const auto number = std::from_chars(text.data(), end, count);
    if (number.ec == std::errc() && number.ptr + 1 == end && count >= 0)
        if (const auto unit = secondsOf(*number.ptr))
            return now + -count * *unit;
    if (const auto date = localMidnight(text))
        return *date;
    throw Error("\"" + text + "\" is no time: say 12h, 7d, 3w or a date such as 2026-05-31.");
}

std::vector<Shared<Event>> timeline(const Journal& journal, Date since,
                                    std::optional<std::size_t> limit) {
    std::vector<Shared<Event>> events = journal.events;
    std::ranges::copy(journal.installationEvents(), std::back_inserter(events));
    std::erase_if(events, [&](const auto& event) { return event->timestamp < since; });
    events = TimelinePresentation::newestFirst(std::move(events));
    if (limit && events.size() > *limit)
        events.erase(events.begin() + static_cast<std::ptrdiff_t>(*limit), events.end());
    return events;
}

std::string timelineText(const std::vector<Shared<Event>>& events, bool colour) {
    return events.empty() ? "No changes have been recorded.\n"
                          : TimelinePrinter(Calendar(), colour).text(events);
}

std::string statusText(const Status& status) {
    std::string out;
    line(out, "Recording", status.activity);
    line(out, "Schedule", status.schedule);
    line(out, "Last capture", moment(status.lastCapture, "None yet"));
    line(out, "Next capture",
         status.running ? moment(status.nextCapture, "Not scheduled")
                        : "Not before a recorder runs (tidemark run)");
    line(out, "Captures kept", std::to_string(status.snapshots));
    line(out, "Events", std::to_string(status.events));
    line(out, "Folders", std::to_string(status.folders));
    for (const auto& problem : status.problems)
        line(out, "Problem", problem);
    return out;
}

std::string coverageText(const Journal& journal, Date since, Date now) {
    const auto report = ObservationCoverageReport::build(journal.snapshots, since, now);
    if (report.gaps.empty() && report.accessIssues.empty())
        return "Every place was seen at every capture that was due.\n";
    std::string out;
    for (const auto& gap : report.gaps)
        out += "No capture  " + moment(gap.start, "") + " – "
               + (gap.isOngoing ? "now" : moment(gap.end, "")) + "\n";
    for (const auto& issue : report.accessIssues)
        out += "Not seen    " + moment(issue.timestamp, "") + "  " + oneLine(issue.message) + "\n";
    return out;
}

std::string foldersText(const FolderAccess& folders,
                        const std::map<std::string, std::string>& failures) {
    const auto access = [&](const std::string& path) {
        const auto failure = failures.find(path);
        return failure == failures.end() ? std::string("readable") : failure->second;
    };
    std::string out = "Monitored\n";
    for (const auto& grant : folders.grants())
        out += "  " + oneLine(grant.path) + "  for " + joined(grant.purposes) + "; "
               + access(grant.path) + "\n";
    if (folders.grants().empty())
        out += "  none\n";
    out += "Recommended\n";
    for (const auto& folder : folders.recommendedFolders()) {
        const std::string path = textFromBytes(folder.url.native());
        const bool monitored =
            std::ranges::any_of(folders.grants(), [&](const auto& g) { return g.path == path; });
        if (!monitored)
            out += "  " + oneLine(folder.title) + ", " + oneLine(path) + ": " + access(path) + "\n";
    }
    return out;
}

} // namespace tidemark::historyText
