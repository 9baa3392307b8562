#include "core/base/Text.h"
#include "core/growth/GrowthText.h"
#include "recorder/Columns.h"
#include "recorder/Commands.h"
#include "recorder/HistoryFilter.h"
#include "recorder/HistoryTime.h"
#include "recorder/TypedInvocation.h"

#include <algorithm>
#include <array>

namespace tidemark {

namespace {

struct GrewOptions {
    std::string since{"7d"};
    std::int64_t limit = 20;
    bool json = false;

    static void checkLimit(const std::int64_t& limit) {
        if (limit < 1 || limit > 1'000'000)
            throw UsageError("the number must be from 1 to 1000000");
    }

    static constexpr auto fields() {
        return std::tuple{
            Option{"since", &GrewOptions::since, sinceHelp, {}, &historyTime::checkSince},
            Option{"limit", &GrewOptions::limit, "The most items to show", {}, &checkLimit},
            Option{"json", &GrewOptions::json, "Print JSON instead of text"}};
    }
};

} // namespace

/// A size in JSON. Not in the anonymous namespace: the codec counts the members of a record by a
/// conversion function that it declares and never defines. For a type of the anonymous namespace,
/// clang requires the definition.
struct SizeEntry {
    std::int64_t bytes = 0;
    Date measuredAt;

    static constexpr auto fields() {
        return std::tuple{Field{"bytes", &SizeEntry::bytes},
                          Field{"measuredAt", &SizeEntry::measuredAt}};
    }
};

namespace {

std::optional<SizeEntry> entryOf(const std::optional<DatedSize>& size) {
    return size ? std::optional(SizeEntry{size->bytes, size->measuredAt}) : std::nullopt;
}

struct PartEntry {
    std::string name;
    std::int64_t before = 0;
    std::int64_t after = 0;

    static constexpr auto fields() {
        return std::tuple{Field{"name", &PartEntry::name, Shown},
                          Field{"before", &PartEntry::before}, Field{"after", &PartEntry::after}};
    }
};

struct ItemEntry {
    std::string kind;
    std::string state;
    std::string name;
    std::string path;
    std::optional<SizeEntry> before;
    std::optional<SizeEntry> after;
    /// Absent where the size at one end is not known.
    std::optional<std::int64_t> change{};
    double share = 0;
    std::vector<PartEntry> parts{};

    static constexpr auto fields() {
        return std::tuple{
            Field{"kind", &ItemEntry::kind, Shown}, Field{"state", &ItemEntry::state, Shown},
            Field{"name", &ItemEntry::name, Shown}, Field{"path", &ItemEntry::path, Private},
            Field{"before", &ItemEntry::before},    Field{"after", &ItemEntry::after},
            Field{"change", &ItemEntry::change},    Field{"share", &ItemEntry::share},
            Field{"parts", &ItemEntry::parts},
        };
    }
};

struct GrowthEntry {
    std::string summary;
    std::optional<SizeEntry> freeBefore;
    std::optional<SizeEntry> freeAfter;
    std::optional<std::int64_t> monitoredChange;
    std::vector<std::string> unknownFolders;
    std::vector<ItemEntry> items{};

    static constexpr auto fields() {
        return std::tuple{
            Field{"summary", &GrowthEntry::summary, Shown},
            Field{"freeBefore", &GrowthEntry::freeBefore},
            Field{"freeAfter", &GrowthEntry::freeAfter},
            Field{"monitoredChange", &GrowthEntry::monitoredChange},
            Field{"unknownFolders", &GrowthEntry::unknownFolders, Shown},
            Field{"items", &GrowthEntry::items},
        };
    }
};

const char* stateName(GrowthItem::State state) {
    switch (state) {
    case GrowthItem::State::appeared:
        return "appeared";
    case GrowthItem::State::gone:
        return "gone";
    case GrowthItem::State::changed:
        return "changed";
    }
    return "";
}

ItemEntry entryOf(const GrowthItem& item) {
    ItemEntry entry{.kind = item.kind == GrowthItem::Kind::folder ? "folder" : "application",
                    .state = stateName(item.state),
                    .name = item.name,
                    .path = item.path,
                    .before = entryOf(item.before),
                    .after = entryOf(item.after),
                    .share = item.share};
    if (growthText::isSizeKnown(item))
        entry.change = item.change();
    for (const auto& part : item.parts)
        entry.parts.push_back({part.name, part.before, part.after});
    return entry;
}

std::string jsonOf(const GrowthReport& report) {
    GrowthEntry entry{.summary = growthText::summary(report),
                      .freeBefore = entryOf(report.freeBefore),
                      .freeAfter = entryOf(report.freeAfter),
                      .monitoredChange = report.monitoredChange,
                      .unknownFolders = report.unknownFolders};
    for (const auto& item : report.items)
        entry.items.push_back(entryOf(item));
    return json::encoded(entry) + "\n";
}

/// Rows of a table, the numbers at the right of their columns.
std::string tableOf(const GrowthReport& report, const Calendar& calendar) {
    std::vector<growthText::Row> rows;
    std::array<std::size_t, 3> widths{};
    for (const auto& item : report.items) {
        const auto row = growthText::row(item, calendar);
        widths[0] = std::max(widths[0], columns(row.change));
        widths[1] = std::max(widths[1], columns(row.share));
        widths[2] = std::max(widths[2], columns(row.name));
        rows.push_back(row);
    }
    const auto padding = [](const std::string& text, std::size_t width) {
        return std::string(width - columns(text), ' ');
    };
    std::string out;
    for (const auto& row : rows)
        out += padding(row.change, widths[0]) + row.change + "  " + padding(row.share, widths[1])
               + row.share + "  " + row.name + padding(row.name, widths[2]) + "  " + row.before
               + " → " + row.after + "\n";
    return out;
}

std::string grew(const HistoryReading& reading, const GrewOptions& options) {
    if (reading.history.journal.snapshots.empty())
        throw Error("No capture has been taken yet.");
    auto report = GrowthReport::of(reading.history.growth(),
                                   historyTime::since(options.since, reading.now), reading.now);
    if (options.json)
        return jsonOf(report);
    const Calendar calendar;
    std::string out = growthText::summary(report) + "\n";
    if (const auto period = growthText::period(report, calendar); !period.empty())
        out += "Measured " + period + "\n";
    const auto limit = static_cast<std::size_t>(options.limit);
    const std::size_t left = report.items.size() - std::min(limit, report.items.size());
    report.items.resize(report.items.size() - left);
    const std::string table = tableOf(report, calendar);
    if (!table.empty())
        out += "\n" + table;
    else if (report.monitoredChange)
        out += "\nNo folder or application has another size.\n";
    if (left > 0)
        out += "and " + std::to_string(left) + " more\n";
    for (const auto& remark : growthText::remarks(report))
        out += "\n" + remark + "\n";
    return out;
}

} // namespace

Command commands::grew() {
    return makeCommand<GrewOptions, &tidemark::grew>({
        .name = "grew",
        .group = CommandGroup::history,
        .summary = "Show which folders and applications became larger or smaller",
        .details = "Without --since, in the last seven days.",
    });
}

} // namespace tidemark
