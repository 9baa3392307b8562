#include "core/base/Text.h"
#include "core/growth/DigestText.h"
#include "core/growth/HistoryDigest.h"
#include "core/growth/StorageChartText.h"
#include "core/presentation/SystemWords.h"
#include "recorder/Commands.h"
#include "recorder/HistoryFilter.h"
#include "recorder/HistoryTime.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct DigestOptions {
    std::string since{"7d"};
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{
            Option{"since", &DigestOptions::since, sinceHelp, {}, &historyTime::checkSince},
            Option{"json", &DigestOptions::json, "Print JSON instead of text"}};
    }
};

struct ChangeEntry {
    std::string name;
    std::string path;
    std::int64_t change = 0;

    static constexpr auto fields() {
        return std::tuple{Field{"name", &ChangeEntry::name, Shown},
                          Field{"path", &ChangeEntry::path, Private},
                          Field{"change", &ChangeEntry::change}};
    }
};

struct BackgroundEntry {
    std::string name;
    std::string event;
    Date intervalStart;
    Date timestamp;

    static constexpr auto fields() {
        return std::tuple{Field{"name", &BackgroundEntry::name, Shown},
                          Field{"event", &BackgroundEntry::event, Internal},
                          Field{"intervalStart", &BackgroundEntry::intervalStart},
                          Field{"timestamp", &BackgroundEntry::timestamp}};
    }
};

struct GapEntry {
    Date start;
    Date end;
    std::string title;
    std::string explanation;

    static constexpr auto fields() {
        return std::tuple{Field{"start", &GapEntry::start}, Field{"end", &GapEntry::end},
                          Field{"title", &GapEntry::title, Shown},
                          Field{"explanation", &GapEntry::explanation, Private}};
    }
};

struct DigestEntry {
    Date since;
    Date through;
    std::map<std::string, std::int64_t> counts{};
    std::string freeSpace;
    std::vector<ChangeEntry> largest{};
    std::vector<BackgroundEntry> background{};
    std::vector<GapEntry> gaps{};

    static constexpr auto fields() {
        return std::tuple{Field{"since", &DigestEntry::since},
                          Field{"through", &DigestEntry::through},
                          Field{"counts", &DigestEntry::counts, Shown},
                          Field{"freeSpace", &DigestEntry::freeSpace, Shown},
                          Field{"largest", &DigestEntry::largest},
                          Field{"background", &DigestEntry::background},
                          Field{"gaps", &DigestEntry::gaps}};
    }
};

std::string jsonOf(const HistoryDigest& digest) {
    DigestEntry entry{
        .since = digest.since, .through = digest.through, .freeSpace = digest.freeSpace};
    for (const auto& count : digest.counts)
        entry.counts.emplace(rawValue(count.category), static_cast<std::int64_t>(count.events));
    for (const auto& item : digest.largest)
        entry.largest.push_back({item.name, item.path, item.change()});
    for (const auto& item : digest.background)
        entry.background.push_back(
            {item.name, item.event->id, item.event->intervalStart, item.event->timestamp});
    for (const auto& gap : digest.gaps)
        entry.gaps.push_back({gap.start, gap.end, gap.title, gap.explanation});
    return json::encoded(entry) + "\n";
}

void addSection(std::string& out, const char* heading, const std::vector<std::string>& lines) {
    if (lines.empty())
        return;
    out += std::string("\n") + heading + "\n";
    for (const auto& line : lines)
        out += "  " + line + "\n";
}

std::string textOf(const HistoryDigest& digest, const Calendar& calendar) {
    const auto moment = [&](Date at) { return calendar.format(at, "d MMM yyyy, HH:mm"); };
    std::vector<std::string> counts{};
    for (const auto& count : digest.counts)
        counts.push_back(systemWords::shown(rawValue(count.category)) + ": "
                         + std::to_string(count.events));
    std::vector<std::string> largest{};
    for (const auto& item : digest.largest)
        largest.push_back(digestText::change(item));
    std::vector<std::string> background{};
    for (const auto& item : digest.background)
        background.push_back(item.name + ", between " + moment(item.event->intervalStart) + " and "
                             + moment(item.event->timestamp));
    std::vector<std::string> gaps{};
    for (const auto& gap : digest.gaps)
        gaps.push_back(gap.title + ", " + gap.times
                       + (gap.explanation.empty() ? "" : ". " + gap.explanation));
    std::string out = "Since " + moment(digest.since) + " ("
                      + storageChartText::lengthInWords(digest.through - digest.since) + ")\n";
    out += digest.freeSpace + "\n";
    addSection(out, "Events", counts);
    addSection(out, "Largest changes", largest);
    addSection(out, "New background items", background);
    addSection(out, "Not observed", gaps);
    return digest.isEmpty() ? out + "\nNothing was recorded.\n" : out;
}

std::string digest(const HistoryReading& reading, const DigestOptions& options) {
    const auto& history = reading.history;
    if (history.journal.snapshots.empty())
        throw Error("No capture has been taken yet.");
    const Calendar calendar;
    // A digest of everything begins with the first capture.
    const Date since = std::max(historyTime::since(options.since, reading.now),
                                history.journal.snapshots.front()->timestamp);
    const auto digest = HistoryDigest::of(history.growth(), history.merged().timeline,
                                          history.gaps(), since, reading.now, calendar);
    return options.json ? jsonOf(digest) : textOf(digest, calendar);
}

} // namespace

Command commands::digest() {
    return makeCommand<DigestOptions, &tidemark::digest>({
        .name = "digest",
        .group = CommandGroup::history,
        .summary = "Show on one page what happened in the last days",
        .details = "Without --since, in the last seven days.",
    });
}

} // namespace tidemark
