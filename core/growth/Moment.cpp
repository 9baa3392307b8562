#include "core/growth/Moment.h"

#include "core/base/Error.h"
#include "core/base/Text.h"
#include "core/timeline/EventBuilder.h"
#include "core/timeline/TimelinePresentation.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <ctime>
#include <iterator>
#include <vector>

namespace tidemark {

namespace {

using Snapshots = std::vector<Shared<Snapshot>>;

std::string quoted(std::string_view text) {
    return "\"" + oneLine(text) + "\"";
}

std::string timeText(Date at, const Calendar& calendar) {
    return calendar.format(at, "d MMM yyyy, HH:mm:ss");
}

Snapshots inOrder(const Journal& journal) {
    Snapshots snapshots = journal.snapshots;
    std::ranges::stable_sort(snapshots, {}, [](const auto& each) { return each->timestamp; });
    return snapshots;
}

std::optional<Moment> namedMoment(const Journal& journal, std::string_view text) {
    std::vector<const Baseline*> found;
    for (const auto& baseline : journal.baselines) {
        if (baseline.id.text() == text)
            return Moment{baseline.snapshot, baseline.name};
        if (baseline.name == text)
            found.push_back(&baseline);
    }
    if (found.size() > 1)
        throw Error("Several snapshots are called " + quoted(text)
                    + "; give the identifier that tidemark snapshot list shows.");
    if (found.size() == 1)
        return Moment{found.front()->snapshot, found.front()->name};
    for (const auto& snapshot : journal.snapshots)
        if (snapshot->id.text() == text)
            return Moment{snapshot};
    return std::nullopt;
}

/// The number in "@-3"; "latest" is 0.
std::optional<std::size_t> placeFromEnd(std::string_view text) {
    if (text == "latest")
        return 0;
    if (!text.starts_with('@'))
        return std::nullopt;
    text.remove_prefix(1);
    if (text.starts_with('-'))
        text.remove_prefix(1);
    else if (text != "0")
        return std::nullopt;
    std::size_t place = 0;
    const char* end = text.data() + text.size();
    const auto number = std::from_chars(text.data(), end, place);
    return number.ec == std::errc() && number.ptr == end ? std::optional(place) : std::nullopt;
}

std::string textOf(std::size_t placeFromEnd) {
    return placeFromEnd == 0 ? "@0" : "@-" + std::to_string(placeFromEnd);
}

Moment nthFromEnd(const Snapshots& snapshots, std::size_t place, std::string_view text) {
    const std::size_t count = snapshots.size();
    if (place >= count)
        throw Error(
            "There is no capture " + quoted(text) + ": "
            + (count == 1 ? "only @0 is kept"
                          : std::to_string(count) + " are kept, the oldest is " + textOf(count - 1))
            + ".");
    return {snapshots[snapshots.size() - 1 - place]};
}

/// Local time given as "2026-05-31", "2026-05-31T14:30" or with a space between.
struct LocalTime {
    std::chrono::local_seconds at;
    bool isDay = false;
    /// How many seconds a text with a time of day stands for: a minute where it has no seconds.
    double length = 0;
};

std::optional<LocalTime> localTime(std::string_view given) {
    using namespace std::chrono;
    const std::string text(given);
    for (const char* format : {"%Y-%m-%d", "%Y-%m-%dT%H:%M", "%Y-%m-%d %H:%M", "%Y-%m-%dT%H:%M:%S",
                               "%Y-%m-%d %H:%M:%S"}) {
        std::tm fields{};
        const char* end = ::strptime(text.c_str(), format, &fields);
        if (!end || *end)
            continue;
        const year_month_day date(year(fields.tm_year + 1900),
                                  month(static_cast<unsigned>(fields.tm_mon + 1)),
                                  day(static_cast<unsigned>(fields.tm_mday)));
        // `strptime` accepts the 31st of a shorter month.
        if (!date.ok())
            return std::nullopt;
        const std::string_view form(format);
        return LocalTime{local_days(date) + hours(fields.tm_hour) + minutes(fields.tm_min)
                             + seconds(fields.tm_sec),
                         form == "%Y-%m-%d", form.ends_with("%S") ? 1.0 : 60.0};
    }
    return std::nullopt;
}

/// Seconds given as "12h", "7d" or "3w".
std::optional<double> length(std::string_view text) {
    double count = 0;
    const char* end = text.data() + text.size();
    const auto number = std::from_chars(text.data(), end, count);
    if (number.ec != std::errc() || number.ptr + 1 != end || !std::isfinite(count) || count < 0)
        return std::nullopt;
    switch (*number.ptr) {
    case 'h':
        return count * 3'600;
    case 'd':
        return count * 86'400;
    case 'w':
        return count * 7 * 86'400;
    default:
        return std::nullopt;
    }
}

/// The number of snapshots up to and including `at`.
std::size_t countThrough(const Snapshots& snapshots, Date at) {
    return static_cast<std::size_t>(
        std::ranges::upper_bound(snapshots, at, {},
                                 [](const auto& each) { return each->timestamp; })
        - snapshots.begin());
}

std::string neighbour(const Snapshots& snapshots, std::size_t place, const Calendar& calendar) {
    return textOf(snapshots.size() - 1 - place) + " ("
           + timeText(snapshots[place]->timestamp, calendar) + ")";
}

Moment lastThrough(const Snapshots& snapshots, Date at, std::string_view text,
                   const Calendar& calendar) {
    const std::size_t count = countThrough(snapshots, at);
    if (count == 0)
        throw Error("No capture of " + quoted(text) + " or earlier is kept. The oldest one is "
                    + neighbour(snapshots, 0, calendar) + ".");
    return {snapshots[count - 1]};
}

Date justBefore(Date at) {
    return {std::nextafter(at.secondsSince2001, -INFINITY)};
}

Moment lastOfDay(const Snapshots& snapshots, Date day, std::string_view text,
                 const Calendar& calendar) {
    const Date next = calendar.startOfNextDay(day);
    const std::size_t through = countThrough(snapshots, justBefore(next));
    if (through > 0 && snapshots[through - 1]->timestamp >= day)
        return {snapshots[through - 1]};
    std::string nearest;
    if (through > 0)
        nearest = "the last one before it is " + neighbour(snapshots, through - 1, calendar);
    if (through < snapshots.size())
        nearest += std::string(nearest.empty() ? "" : ", ") + "the first one after it is "
                   + neighbour(snapshots, through, calendar);
    throw Error("No capture of " + quoted(text) + " is kept; " + nearest + ".");
}

} // namespace

Moment momentOf(const Journal& journal, std::string_view text, Date now, const Calendar& calendar) {
    if (auto named = namedMoment(journal, text))
        return *std::move(named);
    const Snapshots snapshots = inOrder(journal);
    if (snapshots.empty())
        throw Error("No capture has been taken yet.");
    if (const auto place = placeFromEnd(text))
        return nthFromEnd(snapshots, *place, text);
    const Date today = calendar.startOfDay(now);
    if (text == "today")
        return lastOfDay(snapshots, today, text, calendar);
    if (text == "yesterday")
        return lastOfDay(snapshots, calendar.startOfDay(today + -1), text, calendar);
    if (const auto seconds = length(text))
        return lastThrough(snapshots, now + -*seconds, text, calendar);
    if (const auto local = localTime(text)) {
        const Date at = calendar.momentOf(local->at);
        return local->isDay
                   ? lastOfDay(snapshots, at, text, calendar)
                   : lastThrough(snapshots, justBefore(at + local->length), text, calendar);
    }
    throw Error(quoted(text)
                + " is no capture: give the name of a snapshot, a date such as 2026-05-31, "
                  "yesterday, 7d, or @-3 for the third capture before the latest.");
}

std::string label(const Moment& moment, const Calendar& calendar) {
    const std::string time = timeText(moment.snapshot->timestamp, calendar);
    return moment.name ? oneLine(*moment.name) + " (" + time + ")" : time;
}

std::vector<Shared<Event>> differencesOf(const CapturePair& pair) {
    std::vector<Event> events = EventBuilder::build(*pair.from.snapshot, *pair.to.snapshot);
    return TimelinePresentation::newestFirst(
        {std::make_move_iterator(events.begin()), std::make_move_iterator(events.end())});
}

std::optional<Moment> keptMoment(const Journal& journal, const Uuid& snapshot) {
    for (const auto& baseline : journal.baselines)
        if (baseline.snapshot->id == snapshot)
            return Moment{baseline.snapshot, baseline.name};
    for (const auto& kept : journal.snapshots)
        if (kept->id == snapshot)
            return Moment{kept};
    return std::nullopt;
}

} // namespace tidemark
