#include "bench/Report.h"
#include "core/base/Clock.h"
#include "core/base/FileDescriptor.h"
#include "core/storage/StorageTraversal.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tidemark;
namespace fs = std::filesystem;

namespace {

constexpr int rounds = 11;
constexpr std::int64_t noLimit = 1'000'000'000;

/// A folder of its own that is gone when the benchmark ends.
class Workspace {
public:
    Workspace() {
        std::string name = (fs::temp_directory_path() / "tidemark-bench-XXXXXX").native();
        if (::mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no temporary folder: " + name);
        folder = name;
    }
    ~Workspace() {
        std::error_code error;
        fs::remove_all(folder, error);
    }
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    fs::path path() const { return folder; }

private:
    fs::path folder;
};

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

/// Both take the same tree in turns, so that whatever else the machine does meets them alike.
void compareSpeed() {
    const Workspace workspace;
    makeTree(workspace.path(), 250, 4, 300);
    std::vector<double> ours;
    std::vector<double> theirs;
    for (int round = 0; round < rounds; ++round) {
        ours.push_back(bench::seconds([&] { walk(workspace.path(), [](const auto&) {}); }));
        theirs.push_back(bench::seconds([&] { runDu(workspace.path()); }));
    }
    std::printf("walk of 300,000 files: median %.3f s; du: median %.3f s\n", bench::median(ours),
                bench::median(theirs));
    bench::row("walk of 300,000 files in 1,000 folders / du",
               bench::median(ours) / bench::median(theirs), "x", 1);
}

void measureMemory() {
    const Workspace workspace;
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

} // namespace

int main() {
    compareSpeed();
    measureMemory();
}
