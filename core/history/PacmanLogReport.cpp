#include "core/history/PacmanLogReport.h"

#include "core/base/Calendar.h"
#include "core/history/InstallationReport.h"
#include "core/history/PackageLogText.h"

#include <array>
#include <optional>

namespace tidemark::PacmanLogReport {

namespace {

using PackageLogText::clockTime;
using PackageLogText::nextLine;

constexpr std::string_view mark = "[ALPM] ";
constexpr std::string_view arrow = " -> ";
constexpr auto actions =
    std::to_array<std::string_view>({"installed ", "upgraded ", "reinstalled ", "downgraded "});

/// The offset from UTC in seconds of a text such as "+0200"; absent for other texts.
std::optional<double> offset(std::string_view text) {
    if (text.size() != 5 || (text[0] != '+' && text[0] != '-'))
        return std::nullopt;
    const std::string time =
        std::string(text.substr(1, 2)) + ":" + std::string(text.substr(3)) + ":00";
    const auto clock = clockTime("1970-01-01", time);
    if (!clock)
        return std::nullopt;
    const auto seconds = static_cast<double>(clock->time_since_epoch().count());
    return text[0] == '-' ? -seconds : seconds;
}

/// "2024-05-01T12:00:00+0200", or "2019-05-01 12:00".
std::optional<Date> dateOf(std::string_view stamp, const Calendar& calendar) {
    constexpr std::size_t daySize = 10;
    constexpr std::size_t timeSize = 8;
    if (stamp.size() <= daySize)
        return std::nullopt;
    const std::string_view day = stamp.substr(0, daySize);
    const std::string_view rest = stamp.substr(daySize + 1);
    if (stamp[daySize] == ' ') {
        const auto clock = clockTime(day, std::string(rest) + ":00");
        return clock ? std::optional(calendar.momentOf(*clock)) : std::nullopt;
    }
    const auto clock = clockTime(day, rest.substr(0, timeSize));
    const auto east = offset(rest.substr(std::min(timeSize, rest.size())));
    if (!clock || !east)
        return std::nullopt;
    return Date::fromUnix(static_cast<double>(clock->time_since_epoch().count()) - *east);
}

struct Line {
    Date date;
    std::string_view text;
};

/// Absent for a line that does not begin with a time in brackets.
std::optional<Line> lineFrom(std::string_view line, const Calendar& calendar) {
    const auto end = line.find("] ");
    if (!line.starts_with('[') || end == std::string_view::npos)
        return std::nullopt;
    const auto date = dateOf(line.substr(1, end - 1), calendar);
    if (!date)
        return std::nullopt;
    return Line{*date, line.substr(end + 2)};
}

struct Installation {
    std::string_view package;
    std::string_view version;
};

/// The package and the new version in a message such as "installed NAME (VERSION)" or "upgraded
/// NAME (OLD -> NEW)". Both are empty if the message begins with an action but has another form;
/// absent if it begins with no action.
std::optional<Installation> installationIn(std::string_view message) {
    for (const auto action : actions) {
        if (!message.starts_with(action))
            continue;
        message.remove_prefix(action.size());
        const auto blank = message.find(" (");
        if (blank == std::string_view::npos || !message.ends_with(')'))
            return Installation{};
        std::string_view version = message.substr(blank + 2, message.size() - blank - 3);
        if (const auto place = version.find(arrow); place != std::string_view::npos)
            version.remove_prefix(place + arrow.size());
        return Installation{message.substr(0, blank), version};
    }
    return std::nullopt;
}

} // namespace

std::string make(std::string_view log, const std::set<std::string, std::less<>>& automatic,
                 Date since) {
    const Calendar calendar;
    InstallationReport report;
    std::optional<Date> start;
    while (!log.empty()) {
        const auto line = lineFrom(nextLine(log), calendar);
        if (!line || !line->text.starts_with(mark))
            continue;
        const std::string_view message = line->text.substr(mark.size());
        if (message == "transaction started")
            start = line->date;
        else if (message.starts_with("transaction "))
            start.reset();
        const auto installation = installationIn(message);
        if (!installation || line->date < since)
            continue;
        const auto [package, version] = *installation;
        if (PackageLogText::isPackage(package) && PackageLogText::isVersion(version))
            report.add(package, version, start.value_or(line->date), automatic.contains(package));
        else
            report.addUnreadable();
    }
    return report.finish();
}

bool beginsBefore(std::string_view log, Date date) {
    const Calendar calendar;
    while (!log.empty())
        if (const auto line = lineFrom(nextLine(log), calendar))
            return line->date < date;
    return false;
}

} // namespace tidemark::PacmanLogReport
