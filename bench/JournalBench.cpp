// The journal at its limits: loading, saving and copying it, each beside its bound.

#include "bench/Generator.h"
#include "bench/Report.h"
#include "core/base/Files.h"
#include "core/base/JsonEncoder.h"
#include "core/journal/JournalStore.h"

#include <cstdlib>
#include <fstream>
#include <iostream>

#include <nlohmann/json.hpp>
#include <sys/wait.h>
#include <unistd.h>

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

/// Runs this program again for one measurement of memory, which a fresh process alone can tell.
double measuredApart(const char* what, const fs::path& document) {
    const std::string command =
        "\"" + fs::read_symlink("/proc/self/exe").native() + "\" " + what + " " + document.native();
    FILE* output = ::popen(command.c_str(), "r");
    double bytes = 0;
    if (!output || std::fscanf(output, "%lf", &bytes) != 1 || ::pclose(output) != 0) {
        std::fprintf(stderr, "the measurement failed: %s\n", command.c_str());
        std::exit(1);
    }
    return bytes;
}

double peakOfLoading(const fs::path& document) {
    resetPeak();
    const Journal journal = JournalStore(document).load();
    return statusBytes("VmHWM:");
}

/// Peak above what the process held before the save.
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

void measure(const fs::path& folder, Sharing sharing) {
    const fs::path document = folder / "journal.json";
    JournalStore store(document);
    store.save(journalAtItsLimits(sharing));
    const auto size = static_cast<double>(fs::file_size(document));
    const bool bounded = sharing == Sharing::realistic;
    // Without a bound, to tell what the sharing is worth: no real history looks like that.
    const std::string suffix = bounded ? "" : ", nothing shared";
    const auto bound = [&](double value) { return bounded ? value : 0; };
    row("document" + suffix, size / megabyte, "MB");
    row("load, peak resident / document" + suffix, measuredApart("load", document) / size, "x",
        bound(2.5));
    row("resident after load" + suffix, measuredApart("resident", document) / megabyte, "MB");
    row("save, peak above the journal" + suffix, measuredApart("save", document) / megabyte, "MB",
        bound(64));

    const std::string bytes = readFile(document);
    std::vector<double> load;
    std::vector<double> save;
    std::vector<double> loadSeconds;
    std::vector<double> saveSeconds;
    for (int i = 0; i < runs; ++i) {
        nlohmann::json tree;
        const double parsing = seconds([&] { tree = nlohmann::json::parse(bytes); });
        std::string text;
        const double dumping = seconds([&] { text = tree.dump(); });
        tree = nullptr;
        Journal journal;
        loadSeconds.push_back(seconds([&] { journal = store.load(); }));
        load.push_back(loadSeconds.back() / parsing);
        saveSeconds.push_back(seconds([&] { store.save(journal); }));
        save.push_back(saveSeconds.back() / dumping);
    }
    row("load" + suffix, median(loadSeconds) * 1e3, "ms");
    row("load / parse of the same bytes" + suffix, median(load), "x", bound(1));
    row("save, flushed to disk" + suffix, median(saveSeconds) * 1e3, "ms");
    row("save, flushed to disk / dump of a built tree" + suffix, median(save), "x", bound(1));

    if (!bounded)
        return;
    const Journal journal = store.load();
    const Shared<Snapshot> next = snapshotOf(250, 60, 12, 60, Journal::snapshotLimit);
    row("copy of the journal and one append",
        medianOf(101,
                 [&] {
                     return seconds([&] {
                         Journal copy = journal;
                         copy.append(next, true);
                     });
                 })
            * 1e3,
        "ms", 1);
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 3) {
        const std::string_view what = argv[1];
        const fs::path document = argv[2];
        std::cout << (what == "load"   ? peakOfLoading(document)
                      : what == "save" ? peakOfSaving(document)
                                       : residentAfterLoading(document))
                  << "\n";
        return 0;
    }
    std::string name = (fs::temp_directory_path() / "tidemark-bench-XXXXXX").native();
    if (!::mkdtemp(name.data()))
        return 1;
    measure(name, Sharing::realistic);
    measure(name, Sharing::none);
    fs::remove_all(name);
}
