#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/capture/SystemObserver.h"
#include "core/journal/JournalStore.h"
#include "core/storage/ComponentStorageScanner.h"

#include <cstdlib>
#include <fstream>

#include <malloc.h>

// Records folders of this machine capture after capture, as the program does: the time, memory and
// disk space of a real history. Writes only to a folder of its own.

using namespace tidemark;
namespace fs = std::filesystem;

namespace {

constexpr int captures = 20;
constexpr std::int64_t entriesPerSlice = 1'000'000;

/// The number after `key` in a file of this process's counters.
double counter(const char* file, std::string_view key) {
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with(key))
            return std::strtod(line.c_str() + key.size(), nullptr);
    return 0;
}

double residentMegabytes() {
    return counter("/proc/self/status", "VmRSS:") * 1024 / 1e6;
}

double writtenMegabytes() {
    return counter("/proc/self/io", "wchar:") / 1e6;
}

std::vector<fs::path> existing(const std::vector<fs::path>& folders) {
    std::vector<fs::path> found;
    std::ranges::copy_if(folders, std::back_inserter(found),
                         [](const fs::path& folder) { return fs::is_directory(folder); });
    return found;
}

struct Figures {
    std::vector<double> captureSeconds;
    std::vector<double> saveSeconds;
    std::vector<double> written;
};

} // namespace

int main() {
    const bench::Workspace workspace;
    const fs::path document = workspace.path() / "journal.json";
    const ObservationOptions options({}, {}, existing({"/usr/share", "/usr/lib", "/var", "/etc"}));
    ComponentStorageScanner scanner(workspace.path() / "storage-measurements.json",
                                    entriesPerSlice);
    JournalStore store(document);
    Journal journal;
    const double residentAtStart = residentMegabytes();

    Figures figures;
    for (int number = 1; number <= captures; ++number) {
        const double before = writtenMegabytes();
        Snapshot snapshot;
        figures.captureSeconds.push_back(bench::seconds([&] {
            snapshot = SystemObserver::captureProgressively(options, &scanner, [](auto&) {});
        }));
        const std::size_t measured = snapshot.folders.size();
        const std::size_t issues = snapshot.coverage.issues.size();
        figures.saveSeconds.push_back(bench::seconds([&] {
            journal.append(Shared<Snapshot>(std::move(snapshot)), true);
            store.save(journal);
        }));
        figures.written.push_back(writtenMegabytes() - before);
        std::printf("  capture %2d: %6.2f s, saved in %5.3f s; %zu folders measured, %zu issues; "
                    "resident %.1f MB, document %.2f MB, written %.2f MB\n",
                    number, figures.captureSeconds.back(), figures.saveSeconds.back(), measured,
                    issues, residentMegabytes(), static_cast<double>(fs::file_size(document)) / 1e6,
                    figures.written.back());
    }

    ::malloc_trim(0);
    const double documentMegabytes = static_cast<double>(fs::file_size(document)) / 1e6;
    bench::row("capture of real folders, median of 20", bench::median(figures.captureSeconds), "s");
    bench::row("append and save, the last", figures.saveSeconds.back() * 1e3, "ms");
    bench::row("document after 20 captures", documentMegabytes, "MB");
    bench::row("resident above start, after 20 captures", residentMegabytes() - residentAtStart,
               "MB");
    bench::row("written by a capture and its save, median", bench::median(figures.written), "MB");
    bench::row("events of 20 captures in a row", static_cast<double>(journal.events.size()), "");
}
