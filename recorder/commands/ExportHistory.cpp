#include "core/growth/StorageHistoryExport.h"
#include "core/history/HistoryExport.h"
#include "core/presentation/HistoryView.h"
#include "recorder/Commands.h"
#include "recorder/HistoryFilter.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct ExportHistoryOptions : HistoryFilter {
    HistoryExport::Format format{};
    bool includePrivate = false;
    /// Exports the daily sizes instead of events, to which the filters do not apply.
    bool sizes = false;
    /// The file is written by the process of the command line.
    std::optional<FilePath> output;

    static constexpr auto fields() {
        return std::tuple_cat(
            std::tuple{Option{"format",
                              &ExportHistoryOptions::format,
                              "The form of the report",
                              {.isRequired = true}}},
            HistoryFilter::fields(),
            std::tuple{Option{"include-private", &ExportHistoryOptions::includePrivate,
                              "Include paths, names of devices and networks, clips and origins"},
                       Option{"sizes",
                              &ExportHistoryOptions::sizes,
                              "Export the sizes of each day, of up to ten years, instead of events",
                              {.excludes = {"since", "window", "category", "place", "search"}}},
                       Option{"output",
                              &ExportHistoryOptions::output,
                              "File to write; without it the report is printed",
                              {.letter = 'o', .valueName = "FILE"}}});
    }
};

std::string exportedSizes(const HistoryReading& reading, const ExportHistoryOptions& options) {
    if (const auto& problem = reading.history.dailySizesProblem)
        throw Error(*problem);
    if (reading.history.dailySizes->series.empty())
        throw Error("There is nothing to export.");
    return storageHistoryExport::data(*reading.history.dailySizes, options.format,
                                      options.includePrivate);
}

std::string exported(const HistoryReading& reading, const ExportHistoryOptions& options) {
    if (options.sizes)
        return exportedSizes(reading, options);
    auto events = filtered(reading, options).presentation.events;
    if (events.empty())
        throw Error("There is nothing to export.");
    const HistoryExport report{std::move(events), "Timeline", reading.now};
    return report.data(options.format, options.includePrivate);
}

std::optional<std::filesystem::path> outputFile(const ExportHistoryOptions& options) {
    return options.output ? std::optional(options.output->path()) : std::nullopt;
}

} // namespace

Command commands::exportHistory() {
    return makeCommand<ExportHistoryOptions, &exported>(
        {
            .name = "export",
            .group = CommandGroup::history,
            .summary = "Write a report of the history",
            .details =
                "Nothing can be restored from a report. Paths, names of devices and networks, "
                "clips and origins are left out unless --include-private asks for them.",
        },
        {.outputFile = outputFile});
}

} // namespace tidemark
