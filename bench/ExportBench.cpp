// Exports a history at its limits, to text and to a file.

#include "bench/Generator.h"
#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/history/HistoryExport.h"

using namespace tidemark;
using namespace tidemark::bench;

namespace {

constexpr int runs = 7;
constexpr std::size_t events = 10'000;

} // namespace

int main() {
    const HistoryExport report{eventsOf(events), "Timeline", Date::now()};
    const HistoryExport journal{journalAtItsLimits().events, "Timeline", Date::now()};
    const Workspace workspace;
    for (const auto format : {HistoryExport::Format::csv, HistoryExport::Format::json}) {
        for (const bool keep : {false, true}) {
            const std::string what = "export of 10,000 events, " + std::string(rawValue(format))
                                     + (keep ? ", private details" : "");
            row(what, medianOf(runs, [&] { return seconds([&] { report.data(format, keep); }); }),
                "s", 1);
        }
        const auto path = workspace.path() / HistoryExport::fileName(format);
        row("events of a full journal into a file, " + std::string(rawValue(format)),
            medianOf(runs, [&] { return seconds([&] { journal.save(path, format, false); }); }),
            "s", 1);
        row("its size", static_cast<double>(std::filesystem::file_size(path)) / 1e6, "MB");
    }
}
