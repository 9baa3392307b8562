#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/base/Clock.h"
#include "core/base/FileDescriptor.h"
#include "core/capture/SystemObserver.h"
#include "core/storage/ComponentStorageScanner.h"
#include "core/storage/StorageTraversal.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tidemark;
namespace fs = std::filesystem;

namespace {

constexpr int rounds = 11;
constexpr std::int64_t noLimit = 1'000'000'000;

void fill(const fs::path& folder, int files) {
    fs::create_directories(folder);
    const FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY));
    for (int file = 0; file < files; ++file) {
        const std::string name = "document " + std::to_string(file) + ".txt";
        const FileDescriptor made(
            ::openat(opened.get(), name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        if (::ftruncate(made.get(), 1000 + file) != 0)
            throw std::runtime_error("no space for " + name);
    }
}

/// `chains` rows of `depth` folders, each inside the one before.
void makeTree(const fs::path& root, int chains, int depth, int filesPerFolder) {
    for (int chain = 0; chain < chains; ++chain) {
        fs::path folder = root / ("A branch of the tree " + std::to_string(chain));
        for (int level = 0; level < depth; ++level) {
            fill(folder, filesPerFolder);
            folder /= "Level " + std::to_string(level) + " of the same branch";
        }
    }
}

std::int64_t walk(const fs::path& root, auto&& afterStep) {
    auto traversal = StorageTraversal::open(root, noLimit);
    while (true) {
        const auto result = traversal.value().step();
        afterStep(*traversal);
        if (result)
            return result->value().bytes;
    }
}

void runDu(const fs::path& root) {
    std::string path = root.native();
    std::string program = "du";
    std::string summary = "-s";
    std::string apparent = "--apparent-size";
    char* arguments[] = {program.data(), summary.data(), apparent.data(), path.data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = 0;
    if (::posix_spawnp(&child, "du", &actions, nullptr, arguments, environ) != 0
        || ::waitpid(child, &status, 0) != child || status != 0)
        throw std::runtime_error("du can't be run");
    posix_spawn_file_actions_destroy(&actions);
}

double residentMegabytes() {
    std::ifstream statm("/proc/self/statm");
    double total = 0;
    double resident = 0;
    statm >> total >> resident;
    return resident * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

double processorSeconds(int who) {
    rusage usage{};
    ::getrusage(who, &usage);
    const auto secondsOf = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
}

/// Time by the clock and processor time, by round.
struct Times {
    std::vector<double> elapsed;
    std::vector<double> processor;

    /// `who` selects the processor time of the process or of its children.
    void add(int who, auto&& work) {
        const double before = processorSeconds(who);
        elapsed.push_back(bench::seconds(work));
        processor.push_back(processorSeconds(who) - before);
    }
};

/// The median of the ratios by round, since anything that slows a round affects both sides.
double ratio(const std::vector<double>& ours, const std::vector<double>& theirs) {
    std::vector<double> ratios;
    for (std::size_t round = 0; round < ours.size(); ++round)
        ratios.push_back(ours[round] / theirs[round]);
    return bench::median(std::move(ratios));
}

/// This program and du walk the same tree in turns, so that other load on the machine affects them
/// equally.
void compareSpeed() {
    const bench::Workspace workspace;
    makeTree(workspace.path(), 250, 4, 300);
    Times ours;
    Times theirs;
    for (int round = 0; round < rounds; ++round) {
        ours.add(RUSAGE_SELF, [&] { walk(workspace.path(), [](const auto&) {}); });
        theirs.add(RUSAGE_CHILDREN, [&] { runDu(workspace.path()); });
    }
    std::printf("walk of 300,000 files: median %.3f s, %.3f s of processor; du: %.3f s, %.3f s\n",
                bench::median(ours.elapsed), bench::median(ours.processor),
                bench::median(theirs.elapsed), bench::median(theirs.processor));
    bench::row("walk of 300,000 files in 1,000 folders / du", ratio(ours.elapsed, theirs.elapsed),
               "x", 0.95);
    bench::row("the same, processor time", ratio(ours.processor, theirs.processor), "x", 0.95);
}

void measureMemory() {
    const bench::Workspace workspace;
    makeTree(workspace.path(), 5200, 10, 1);
    const double start = residentMegabytes();
    double peak = start;
    int steps = 0;
    std::size_t kept = 0;
    walk(workspace.path(), [&](const StorageTraversal& traversal) {
        if (++steps % 1024 == 0)
            peak = std::max(peak, residentMegabytes());
        kept = traversal.completedSizes().size();
    });
    std::printf("folders kept: %zu\n", kept);
    bench::row("memory above start, walking 52,000 folders", peak - start, "MB", 64);
}

constexpr int roots = 12;
constexpr int childrenPerRoot = 60;

struct MeasuredCapture {
    double seconds = 0;
    /// What was passed to the system to be written.
    double megabytes = 0;
};

double writtenMegabytes() {
    std::ifstream counters("/proc/self/io");
    for (std::string line; std::getline(counters, line);)
        if (line.starts_with("wchar:"))
            return std::strtod(line.c_str() + 6, nullptr) / 1e6;
    return 0;
}

MeasuredCapture captureOnce(const ObservationOptions& options, ComponentStorageScanner& scanner) {
    MeasuredCapture result;
    const double written = writtenMegabytes();
    result.seconds = bench::seconds([&] {
        const auto snapshot = SystemObserver::captureProgressively(options, &scanner, [](auto&) {});
        if (snapshot.folders.size() != roots)
            throw std::runtime_error("a root was not measured");
    });
    result.megabytes = writtenMegabytes() - written;
    return result;
}

/// Captures many small folders, where saving could take longer than measuring.
void measureSaving() {
    const bench::Workspace workspace;
    std::vector<fs::path> folders;
    for (int root = 0; root < roots; ++root) {
        folders.push_back(workspace.path() / "home/user"
                          / ("Folder of projects " + std::to_string(root)));
        for (int child = 0; child < childrenPerRoot; ++child)
            fill(folders.back() / ("A project of the user " + std::to_string(child)), 5);
    }
    const ObservationOptions options(std::vector<ApplicationRoot>{}, std::vector<BackgroundRoot>{},
                                     std::move(folders));
    ComponentStorageScanner inMemory("", 1'000'000);
    ComponentStorageScanner inFile(workspace.path() / "data/measurements.json", 1'000'000);
    std::vector<double> without;
    std::vector<double> with;
    std::vector<double> written;
    for (int round = 0; round < rounds; ++round) {
        without.push_back(captureOnce(options, inMemory).seconds);
        const auto capture = captureOnce(options, inFile);
        with.push_back(capture.seconds);
        written.push_back(capture.megabytes);
    }
    std::printf("12 folders of 60 children: median %.3f s; with the file: %.3f s\n",
                bench::median(without), bench::median(with));
    bench::row("capture of 12 x 60 folders, measurements saved / not", ratio(with, without), "x",
               1.5);
    bench::row("written by such a capture", bench::median(written), "MB", 4);
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view only = argc > 1 ? argv[1] : "";
    if (only.empty() || only == "walk")
        compareSpeed();
    if (only.empty() || only == "memory")
        measureMemory();
    if (only.empty() || only == "saving")
        measureSaving();
}
