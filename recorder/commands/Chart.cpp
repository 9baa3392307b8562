#include "core/growth/StorageChartText.h"
#include "recorder/ChartPrinter.h"
#include "recorder/Columns.h"
#include "recorder/Commands.h"
#include "recorder/HistoryFilter.h"
#include "recorder/HistoryTime.h"
#include "recorder/TerminalColumns.h"
#include "recorder/TypedInvocation.h"

#include <algorithm>
#include <array>

namespace tidemark {

namespace {

struct ChartOptions {
    std::string folder{"free"};
    std::optional<std::string> since;
    /// Set in the process of the command, which has the terminal, not in the recorder that answers
    /// it.
    std::int64_t width = terminalColumns();
    bool table = false;
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{
            Option{"folder",
                   &ChartOptions::folder,
                   "Name or path of a folder, or \"free\" for free space (the default)",
                   {.isPositional = true}},
            Option{"since", &ChartOptions::since, sinceHelp, {}, &historyTime::checkSince},
            Option{"width", &ChartOptions::width,
                   "Columns of the drawing, instead of those of the terminal"},
            Option{"table", &ChartOptions::table, "Show the sizes as a table instead"},
            Option{"json",
                   &ChartOptions::json,
                   "Print JSON instead of text",
                   {.excludes = {"table"}}}};
    }
};

struct PointEntry {
    Date measuredAt;
    std::int64_t bytes = 0;
    /// Points with the same number are joined.
    std::int64_t line = 0;
    std::optional<Uuid> snapshot;

    static constexpr auto fields() {
        return std::tuple{Field{"measuredAt", &PointEntry::measuredAt},
                          Field{"bytes", &PointEntry::bytes}, Field{"line", &PointEntry::line},
                          Field{"snapshot", &PointEntry::snapshot, Internal}};
    }
};

struct NoteEntry {
    Date start;
    Date end;
    std::string text;
    /// The identifier of the event or of the named snapshot that the note is about.
    std::optional<std::string> id;

    static constexpr auto fields() {
        return std::tuple{Field{"start", &NoteEntry::start}, Field{"end", &NoteEntry::end},
                          Field{"text", &NoteEntry::text, Private},
                          Field{"id", &NoteEntry::id, Internal}};
    }
};

struct ChartEntry {
    std::string name;
    std::string path;
    Date since;
    Date through;
    std::vector<PointEntry> points{};
    std::vector<NoteEntry> gaps{};
    std::vector<NoteEntry> breaks{};
    std::vector<NoteEntry> snapshots{};
    std::vector<NoteEntry> events{};

    static constexpr auto fields() {
        return std::tuple{
            Field{"name", &ChartEntry::name, Private}, Field{"path", &ChartEntry::path, Private},
            Field{"since", &ChartEntry::since},        Field{"through", &ChartEntry::through},
            Field{"points", &ChartEntry::points},      Field{"gaps", &ChartEntry::gaps},
            Field{"breaks", &ChartEntry::breaks},      Field{"snapshots", &ChartEntry::snapshots},
            Field{"events", &ChartEntry::events},
        };
    }
};

std::string jsonOf(const StorageChart& chart) {
    ChartEntry entry{.name = chart.subject.name,
                     .path = chart.subject.path,
                     .since = chart.since,
                     .through = chart.through};
    for (const auto& point : chart.points)
        entry.points.push_back(
            {point.at, point.bytes, static_cast<std::int64_t>(point.line), point.snapshot});
    for (const auto& gap : chart.gaps)
        entry.gaps.push_back({gap.start, gap.end, gap.text, {}});
    for (const auto& edge : chart.breaks)
        entry.breaks.push_back({edge.at, edge.at, edge.text, {}});
    for (const auto& flag : chart.flags)
        entry.snapshots.push_back({flag.at, flag.at, flag.name, flag.baseline.text()});
    for (const auto& mark : chart.marks)
        entry.events.push_back(
            {mark.event->intervalStart, mark.event->timestamp, mark.title, mark.event->id});
    return json::encoded(entry) + "\n";
}

std::string tableOf(const StorageChart& chart, const Calendar& calendar) {
    const auto rows = storageChartText::rows(chart, calendar);
    if (rows.empty())
        return std::string(storageChartText::noPoints).append("\n");
    using Cells = std::array<std::string, 4>;
    std::vector<Cells> table;
    const auto headers = storageChartText::headers();
    Cells heading;
    std::ranges::copy(headers, heading.begin());
    table.push_back(heading);
    for (const auto& row : rows)
        table.push_back({row.when, row.size, row.change, row.note});
    std::array<std::size_t, 4> widths{};
    for (const auto& cells : table)
        for (std::size_t i = 0; i < cells.size(); ++i)
            widths[i] = std::max(widths[i], columns(cells[i]));
    std::string out;
    for (const auto& cells : table) {
        std::string line;
        for (std::size_t i = 0; i < cells.size(); ++i)
            line += cells[i] + std::string(widths[i] + 2 - columns(cells[i]), ' ');
        line.erase(line.find_last_not_of(' ') + 1);
        out += line + "\n";
    }
    return out;
}

std::string chart(const HistoryReading& reading, const ChartOptions& options) {
    const GrowthSource source = reading.history.growth();
    if (source.journal->snapshots.empty() && source.history->series.empty())
        throw Error("No capture has been taken yet.");
    const auto since = options.since
                           ? std::optional(historyTime::since(*options.since, reading.now))
                           : std::nullopt;
    const Calendar calendar;
    const auto chart = StorageChart::of(source, storageSubject(source, options.folder), since,
                                        reading.now, calendar);
    if (options.json)
        return jsonOf(chart);
    if (options.table)
        return tableOf(chart, calendar);
    const auto width = std::max<std::int64_t>(options.width, 0);
    return ChartPrinter(calendar, static_cast<std::size_t>(width)).text(chart);
}

} // namespace

Command commands::chart() {
    return makeCommand<ChartOptions, &tidemark::chart>({
        .name = "chart",
        .group = CommandGroup::history,
        .summary = "Draw free space or the size of a folder over time",
        .details = "Sizes are joined only where no capture that was due is missing between them.",
    });
}

} // namespace tidemark
