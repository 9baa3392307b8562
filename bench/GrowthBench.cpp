// Charts of sizes, the list of what grew, and the differences of two captures: the data, and a
// command that is sent to a running recorder.

#include "bench/Generator.h"
#include "bench/RecorderProcess.h"
#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/base/JsonEncoder.h"
#include "core/growth/GrowthReport.h"
#include "core/growth/Moment.h"
#include "core/growth/StorageChart.h"
#include "core/growth/StorageHistory.h"
#include "core/journal/JournalStore.h"

using namespace tidemark;
using namespace tidemark::bench;

namespace {

constexpr int runs = 21;
constexpr std::size_t folders = 50;
constexpr std::int64_t years = 10;
constexpr double day = 86'400;

/// 720 captures of 50 folders, half an hour apart.
Journal journalOfFolders() {
    Journal journal;
    for (std::size_t i = 0; i < Journal::snapshotLimit; ++i)
        journal.snapshots.emplace_back(snapshotOf(250, 60, folders, 12, i));
    return journal;
}

/// One size a day in the ten years before the capture `first`, for everything whose size it has.
StorageHistory tenYears(const Snapshot& first) {
    StorageHistory history;
    history.record(first, Calendar());
    for (auto& series : history.series) {
        StorageSeries filled = *series;
        const Date last = filled.measuredAt.back();
        filled.measuredAt.clear();
        filled.bytes.clear();
        for (std::int64_t i = years * 365; i > 0; --i) {
            filled.measuredAt.push_back(last + -static_cast<double>(i) * day);
            filled.bytes.push_back(50'000'000'000 - i * 1'000'003);
        }
        series.emplace(std::move(filled));
    }
    return history;
}

template <class Work>
void timed(const std::string& what, double bound, Work work) {
    row(what, medianOf(runs, [&] { return seconds(work); }) * 1e3, "ms", bound);
}

void data(const GrowthSource& source) {
    const Date now = source.journal->snapshots.back()->timestamp + 60;
    const auto subjects = storageSubjects(source);
    std::size_t points = 0;
    timed("chart of a folder, 720 captures of 50 folders, ten years", 30, [&] {
        points = StorageChart::of(source, subjects.back(), {}, now, Calendar()).points.size();
    });
    row("points", static_cast<double>(points), "");
    timed("chart and what grew, as the window makes them", 60, [&] {
        points = storageSubjects(source).size()
                 + StorageChart::of(source, subjects.front(), {}, now, Calendar()).points.size()
                 + GrowthReport::of(source, now + -30 * day, now).items.size();
    });
    const CapturePair pair{{source.journal->snapshots.front()}, {source.journal->snapshots.back()}};
    timed("differences of the first and the last capture", 20,
          [&] { points = differencesOf(pair).size(); });
    StorageHistory history = *source.history;
    timed("add a capture to ten years", 30,
          [&] { history.record(*source.journal->snapshots.back(), Calendar()); });
    row("one year of 50 folders and their largest children",
        static_cast<double>(json::encoded(history).size()) / 1e3 / years, "kB");
}

void command(const Journal& journal) {
    const Workspace workspace;
    RecorderProcess::prepare(workspace.path());
    JournalStore(workspace.path() / "data/Tidemark/journal.json").save(journal);
    const RecorderProcess recorder(workspace.path());
    recorder.secondsUntil(R"("snapshots":720)");
    timed("diff of two captures, from the start of the command", 100,
          [&] { recorder.command({"diff", "@-700", "@0", "--json"}); });
    timed("chart, from the start of the command", 100,
          [&] { recorder.command({"chart", "free"}); });
}

} // namespace

int main() {
    const Journal journal = journalOfFolders();
    data({Shared(Journal(journal)), Shared(tenYears(*journal.snapshots.front()))});
    command(journal);
}
