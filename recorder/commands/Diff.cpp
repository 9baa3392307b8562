#include "core/growth/Moment.h"
#include "core/history/HistoryExport.h"
#include "core/presentation/SnapshotViewMode.h"
#include "recorder/Commands.h"
#include "recorder/EventAnswer.h"
#include "recorder/TimelinePrinter.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct DiffOptions {
    std::string from;
    std::string to{"@0"};
    std::optional<HistoryExport::Format> report;
    bool includePrivate = false;
    bool json = false;
    /// The file is written by the process of the command line.
    std::optional<FilePath> output;

    static constexpr auto fields() {
        return std::tuple{
            Option{
                "from", &DiffOptions::from, momentHelp, {.isPositional = true, .isRequired = true}},
            Option{"to",
                   &DiffOptions::to,
                   "The same; without it the latest capture",
                   {.isPositional = true}},
            Option{"report", &DiffOptions::report,
                   "Make a report in this form, as tidemark export does"},
            Option{"include-private", &DiffOptions::includePrivate, "Include paths in the report"},
            Option{"json",
                   &DiffOptions::json,
                   "Print stored JSON instead of text",
                   {.excludes = {"report"}}},
            Option{"output",
                   &DiffOptions::output,
                   "File to write; without it the differences are printed",
                   {.letter = 'o', .valueName = "FILE"}}};
    }
};

std::string diff(const HistoryReading& reading, const DiffOptions& options) {
    const Calendar calendar;
    const Journal& journal = reading.history.journal;
    const CapturePair pair{momentOf(journal, options.from, reading.now, calendar),
                           momentOf(journal, options.to, reading.now, calendar)};
    const auto events = differencesOf(pair);
    if (options.report) {
        const HistoryExport report{events, std::string(rawValue(SnapshotViewMode::states)),
                                   reading.now};
        return report.data(*options.report, options.includePrivate);
    }
    if (options.json)
        return json::encoded(events) + "\n";
    std::string out =
        "From " + label(pair.from, calendar) + "\nto   " + label(pair.to, calendar) + "\n\n";
    if (pair.from.snapshot->id == pair.to.snapshot->id)
        return out + "Both are the same capture.\n";
    if (events.empty())
        return out + "No differences.\n";
    return out + TimelinePrinter(calendar, reading.colour).text(events);
}

std::optional<std::filesystem::path> outputFile(const DiffOptions& options) {
    return options.output ? std::optional(options.output->path()) : std::nullopt;
}

} // namespace

Command commands::diff() {
    return makeCommand<DiffOptions, &tidemark::diff>(
        {
            .name = "diff",
            .group = CommandGroup::history,
            .summary = "Show the differences between any two captures",
            .details = "The differences are those of the two states, not all that happened in "
                       "between.",
        },
        {.outputFile = outputFile});
}

} // namespace tidemark
