// Loading, saving and copying a journal at its limits, each compared with its bound.

#include "bench/Generator.h"
#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/base/Files.h"
#include "core/base/JsonEncoder.h"
#include "core/journal/JournalStore.h"

#include <cstdlib>
#include <fstream>
#include <iostream>

#include <nlohmann/json.hpp>

namespace {

using namespace tidemark;
using namespace tidemark::bench;
namespace fs = std::filesystem;

constexpr int runs = 7;
constexpr double megabyte = 1e6;

/// A line of /proc/self/status in bytes, such as the resident set ("VmRSS:") or its peak.
double statusBytes(std::string_view name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name))
            return std::strtod(line.c_str() + name.size(), nullptr) * 1024;
    return 0;
}

void resetPeak() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

/// Runs this program again for one measurement that needs a new process: of memory, or of a time
/// that depends on what the heap was used for before.
double measuredApart(const std::string& what, const fs::path& document) {
    const std::string command =
        "\"" + fs::read_symlink("/proc/self/exe").native() + "\" " + what + " " + document.native();
    FILE* output = ::popen(command.c_str(), "r");
    double figure = 0;
    if (!output || std::fscanf(output, "%lf", &figure) != 1 || ::pclose(output) != 0) {
        std::fprintf(stderr, "the measurement failed: %s\n", command.c_str());
        std::exit(1);
    }
    return figure;
}

double secondsToLoad(const fs::path& document) {
    Journal journal;
    return seconds([&] { journal = JournalStore(document).load(); });
}

/// Seconds to parse the document as a generic tree, from bytes in memory.
double secondsToParse(const fs::path& document) {
    const std::string bytes = readFile(document);
    nlohmann::json tree;
    return seconds([&] { tree = nlohmann::json::parse(bytes); });
}

double peakOfLoading(const fs::path& document) {
    resetPeak();
    const Journal journal = JournalStore(document).load();
    return statusBytes("VmHWM:");
}

/// Peak memory of a save, less the memory of the process before it.
double peakOfSaving(const fs::path& document) {
    const Journal journal = JournalStore(document).load();
    const double before = statusBytes("VmRSS:");
    resetPeak();
    JournalStore(document.parent_path() / "copy.json").save(journal);
    return statusBytes("VmHWM:") - before;
}

double residentAfterLoading(const fs::path& document) {
    const Journal journal = JournalStore(document).load();
    return statusBytes("VmRSS:");
}

/// Resident memory of a process that added all captures itself.
double residentAfterCapturing() {
    const Journal journal = journalOfRealFolders();
    return statusBytes("VmRSS:");
}

double measurement(const std::string_view what, const fs::path& document) {
    if (what == "load")
        return peakOfLoading(document);
    if (what == "save")
        return peakOfSaving(document);
    if (what == "load-time")
        return secondsToLoad(document);
    if (what == "parse-time")
        return secondsToParse(document);
    if (what == "captures")
        return residentAfterCapturing();
    if (what == "start") {
        const fs::path empty = document.parent_path() / "empty.json";
        JournalStore(empty).save({});
        return residentAfterLoading(empty);
    }
    return residentAfterLoading(document);
}

/// The medians of the times of loading and saving, and of their ratios to parsing and writing the
/// same bytes as a generic tree. Each load and each parse has a process of its own, as at the start
/// of a recorder: freeing a tree leaves a heap in pieces, which slows down whatever is loaded next.
struct Times {
    double load;
    double loadByParse;
    double save;
    double saveByDump;
};

Times timesOf(const fs::path& document) {
    JournalStore store(document);
    const Journal journal = store.load();
    const auto tree = nlohmann::json::parse(readFile(document));
    std::vector<double> load, loadSeconds, save, saveSeconds;
    for (int i = 0; i < runs; ++i) {
        loadSeconds.push_back(measuredApart("load-time", document));
        load.push_back(loadSeconds.back() / measuredApart("parse-time", document));
        std::string text;
        const double dumping = seconds([&] { text = tree.dump(); });
        saveSeconds.push_back(seconds([&] { store.save(journal); }));
        save.push_back(saveSeconds.back() / dumping);
    }
    return {median(loadSeconds), median(load), median(saveSeconds), median(save)};
}

/// The bounds for a document; 0 where there is none.
struct Bounds {
    double peak = 0;
    double resident = 0;
    double peakOfSave = 0;
    double load = 0;
    double save = 0;
};
constexpr Bounds realFoldersBounds{2, 1, 64, 0.8, 0.6};
constexpr Bounds limitsBounds{2.5, 0, 64, 1, 1};

void measureDocument(const fs::path& document, const std::string& suffix, const Bounds& bounds) {
    const auto size = static_cast<double>(fs::file_size(document));
    row("document" + suffix, size / megabyte, "MB");
    row("load, peak resident / document" + suffix, measuredApart("load", document) / size, "x",
        bounds.peak);
    row("resident after load / document" + suffix, measuredApart("resident", document) / size, "x",
        bounds.resident);
    row("save, peak above the journal" + suffix, measuredApart("save", document) / megabyte, "MB",
        bounds.peakOfSave);
    const Times times = timesOf(document);
    row("load" + suffix, times.load * 1e3, "ms");
    row("load / parse of the same bytes" + suffix, times.loadByParse, "x", bounds.load);
    row("save, flushed to disk" + suffix, times.save * 1e3, "ms");
    row("save, flushed to disk / dump of a built tree" + suffix, times.saveByDump, "x",
        bounds.save);
}

/// A history of one folder with nothing but files. Its document is small compared with the program,
/// so the memory of the program with an empty history is subtracted.
void measureFiles(const fs::path& document, std::size_t files, bool changing) {
    const std::string suffix =
        ", " + std::to_string(files) + " files" + (changing ? ", one changes" : "");
    const Journal journal = journalOfFiles(files, changing);
    JournalStore store(document);
    const double saving = medianOf(3, [&] { return seconds([&] { store.save(journal); }); });
    const double start = measuredApart("start", document);
    row("document" + suffix, static_cast<double>(fs::file_size(document)) / megabyte, "MB", 2);
    row("load, peak above an empty history" + suffix,
        (measuredApart("load", document) - start) / megabyte, "MB", 4);
    row("resident above an empty history" + suffix,
        (measuredApart("resident", document) - start) / megabyte, "MB", 4);
    row("save, flushed to disk" + suffix, saving * 1e3, "ms", 500);
}

template <class Capture>
void measureAppend(const Journal& journal, const Capture& capture, const std::string& suffix) {
    const Snapshot next = capture(Journal::snapshotLimit);
    row("copy of the journal and one append" + suffix,
        medianOf(51,
                 [&] {
                     Shared<Snapshot> taken{Snapshot(next)};
                     return seconds([&] {
                         Journal copy = journal;
                         copy.append(std::move(taken), true);
                     });
                 })
            * 1e3,
        "ms", 1);
}

void measureRealFolders(const fs::path& document) {
    const std::string suffix = ", real folders";
    JournalStore store(document);
    store.save(journalOfRealFolders());
    measureDocument(document, suffix, realFoldersBounds);
    row("resident after 720 captures / document" + suffix,
        measuredApart("captures", document) / static_cast<double>(fs::file_size(document)), "x", 1);
    measureAppend(store.load(), captureOfRealFolders, suffix);
}

void measureLimits(const fs::path& document, Sharing sharing) {
    JournalStore(document).save(journalAtItsLimits(sharing));
    // Without any sharing, for comparison; real histories are not like that.
    if (sharing == Sharing::realistic)
        measureDocument(document, ", limits", limitsBounds);
    else
        measureDocument(document, ", nothing shared", {});
}

} // namespace

/// With the path of a document as argument, prints only the rows for that document. With two
/// arguments, prints the figure for `measuredApart`.
int main(int argc, char** argv) {
    if (argc == 2) {
        measureDocument(argv[1], "", realFoldersBounds);
        return 0;
    }
    if (argc == 3) {
        std::cout << std::fixed << measurement(argv[1], argv[2]) << "\n";
        return 0;
    }
    const Workspace workspace;
    const fs::path document = workspace.path() / "journal.json";
    measureRealFolders(document);
    measureFiles(document, 2'000, true);
    measureFiles(document, 9'999, false);
    measureFiles(document, 9'999, true);
    measureFiles(document, 40'000, false);
    measureLimits(document, Sharing::realistic);
    measureLimits(document, Sharing::none);
}
