#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/base/FileDescriptor.h"
#include "core/capture/SystemObserver.h"
#include "core/storage/ComponentStorageScanner.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tidemark;
namespace fs = std::filesystem;

namespace {

constexpr int bundles = 500;
constexpr int definitions = 300;
constexpr int rounds = 21;
constexpr int captures = 5;
constexpr int folders = 1000;
constexpr int filesPerFolder = 999;

std::string entry(const std::string& key, const std::string& text) {
    return "<key>" + key + "</key><string>" + text + "</string>";
}

void writeList(const fs::path& file, const std::string& elements) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">"
                        << "<dict>" << elements << "</dict></plist>\n";
}

/// A bundle with as much metadata as an ordinary application has.
void writeBundle(const fs::path& root, int number) {
    const std::string name = "Application " + std::to_string(number);
    std::string more;
    for (int key = 0; key < 60; ++key)
        more += entry("NSUsageDescription" + std::to_string(key),
                      "A sentence that tells the user why this application wants to do so.");
    writeList(root / (name + ".app") / "Contents/Info.plist",
              entry("CFBundleIdentifier", "org.example.application" + std::to_string(number))
                  + entry("CFBundleName", name) + entry("CFBundleShortVersionString", "1.2.3")
                  + entry("CFBundleVersion", "123") + more);
}

void writeDefinition(const fs::path& root, int number) {
    const std::string label = "org.example.application" + std::to_string(number) + ".helper";
    writeList(root / (label + ".plist"),
              entry("Label", label)
                  + "<key>ProgramArguments</key><array><string>/usr/bin/helper"
                    "</string><string>--serve</string></array>"
                    "<key>RunAtLoad</key><true/><key>StartInterval</key>"
                    "<integer>300</integer><key>EnvironmentVariables</key><dict>"
                  + entry("LANG", "C") + "</dict>");
}

void measureInventory() {
    const bench::Workspace workspace;
    const fs::path applications = workspace.path() / "Applications";
    const fs::path agents = workspace.path() / "Agents";
    for (int i = 0; i < bundles; ++i)
        writeBundle(applications, i);
    for (int i = 0; i < definitions; ++i)
        writeDefinition(agents, i);
    const ObservationOptions options(std::vector<ApplicationRoot>{applications},
                                     std::vector{BackgroundRoot{agents}});
    const double took = bench::medianOf(rounds, [&] {
        return bench::seconds([&] {
            const Snapshot snapshot = SystemObserver::capture(options);
            if (snapshot.applications->size() != bundles
                || snapshot.backgroundItems->size() != definitions)
                throw std::runtime_error("the inventory is not complete");
        });
    });
    bench::row("inventory of 500 bundles and 300 definitions, warm", took * 1e3, "ms", 150);
}

/// Measures how long the capture works between two pauses.
class TracingClock final : public Clock {
public:
    TracingClock() { restart(); }
    Date now() override { return Clock::system().now(); }
    double monotonicSeconds() override {
        const double time = Clock::system().monotonicSeconds();
        // The walk reads the clock after every step.
        longestStep = std::max(longestStep, time - lastLook);
        lastLook = time;
        return time;
    }
    bool pause(double seconds, const std::stop_token& stop) override {
        monotonicSeconds();
        stretches.push_back(lastLook - lastPause);
        const bool mayContinue = Clock::system().pause(seconds, stop);
        restart();
        return mayContinue;
    }
    void restart() { lastPause = lastLook = Clock::system().monotonicSeconds(); }

    std::vector<double> stretches;
    double longestStep = 0;

private:
    double lastPause = 0;
    double lastLook = 0;
};

double peakResidentMegabytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::strtod(line.c_str() + 6, nullptr) * 1024 / 1e6;
    return 0;
}

void makeLargeRoot(const fs::path& root) {
    for (int folder = 0; folder < folders; ++folder) {
        const fs::path path = root / ("folder " + std::to_string(folder));
        fs::create_directories(path);
        const FileDescriptor opened(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        for (int file = 0; file < filesPerFolder; ++file) {
            const std::string name = "file " + std::to_string(file);
            if (!FileDescriptor(
                    ::openat(opened.get(), name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600)))
                throw std::runtime_error("no room for " + name);
        }
    }
}

struct Capture {
    double seconds = 0;
    double walkSeconds = 0;
    double longestStretch = 0;
    double longestStep = 0;
    std::int64_t pauses = 0;
};

/// With `withScanner`, measures by child folders as the program does; otherwise walks the root in
/// one go.
Capture captureOnce(const fs::path& root, bool withScanner) {
    const ObservationOptions options(std::vector<ApplicationRoot>{}, std::vector<BackgroundRoot>{},
                                     {root});
    TracingClock clock;
    ComponentStorageScanner scanner("", 1'000'000, clock);
    Snapshot snapshot;
    Capture result;
    result.seconds = bench::seconds([&] {
        snapshot = SystemObserver::captureProgressively(
            options, withScanner ? &scanner : nullptr, [&](const std::string&) { clock.restart(); },
            clock);
    });
    if (snapshot.folders.size() != 1)
        std::printf("  not measured to the end: %s\n",
                    snapshot.coverage.issues.empty() ? "?" : snapshot.coverage.issues[0].c_str());
    for (const double stretch : clock.stretches) {
        result.walkSeconds += stretch;
        result.longestStretch = std::max(result.longestStretch, stretch);
    }
    result.pauses = static_cast<std::int64_t>(clock.stretches.size());
    result.longestStep = clock.longestStep;
    return result;
}

/// Runs in a process of its own, so that its peak memory is that of the capture.
void measureProgressively(const fs::path& root, bool withScanner) {
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child < 0)
        throw std::runtime_error("no process could be started");
    if (child == 0) {
        const char* what = withScanner ? "by child folders" : "whole";
        std::vector<double> stretches;
        Capture last;
        for (int round = 0; round < captures; ++round) {
            last = captureOnce(root, withScanner);
            stretches.push_back(last.longestStretch * 1e3);
            std::printf(
                "  %s: %.1f s, %.1f s of it in %lld batches; longest batch %.1f ms, longest "
                "time between two looks at the clock %.1f ms\n",
                what, last.seconds, last.walkSeconds, static_cast<long long>(last.pauses),
                last.longestStretch * 1e3, last.longestStep * 1e3);
        }
        bench::row(std::string("longest walk without a rest, 1,000,000 entries, ") + what,
                   bench::median(stretches), "ms", 25);
        bench::row(std::string("peak resident, the same, ") + what, peakResidentMegabytes(), "MB",
                   120);
        std::fflush(stdout);
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (status != 0)
        throw std::runtime_error("the capture failed");
}

void measureLargeRoot() {
    const bench::Workspace workspace;
    makeLargeRoot(workspace.path());
    measureProgressively(workspace.path(), false);
    measureProgressively(workspace.path(), true);
}

} // namespace

int main() {
    measureInventory();
    measureLargeRoot();
}
