#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"
#include "core/capture/SystemObserver.h"
#include "core/journal/Journal.h"

#include <fstream>
#include <stdexcept>

#include <malloc.h>

using namespace tidemark;
namespace fs = std::filesystem;

namespace {

constexpr int rounds = 21;
/// As many unit files of each kind, drop-ins, autostart entries and cron tables as on a desktop.
constexpr int services = 330;
constexpr int timers = 40;
constexpr int sockets = 60;
constexpr int others = 270;
constexpr int dropIns = 40;
constexpr int entries = 60;
constexpr int tables = 10;

void write(const fs::path& file, const std::string& bytes) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << bytes;
}

std::string unit(const std::string& body, bool canBeEnabled) {
    return "[Unit]\nDescription=One part of a "
           "desktop\nDocumentation=man:part(8)\nAfter=basic.target\n"
           "ConditionPathExists=/etc/part\n\n"
           + body + "ProtectSystem=strict\nProtectHome=yes\nPrivateTmp=yes\n"
           + (canBeEnabled ? "\n[Install]\nWantedBy=multi-user.target\n" : "");
}

/// The units, autostart entries and cron tables of a full desktop. About one unit in seven can be
/// enabled and is recorded.
void makeMachine(const fs::path& root) {
    const fs::path vendor = root / "usr/lib/systemd/system";
    const fs::path admin = root / "etc/systemd/system";
    fs::create_directories(admin / "multi-user.target.wants");
    for (int i = 0; i < services; ++i) {
        const std::string name = "part-" + std::to_string(i) + ".service";
        write(vendor / name, unit("[Service]\nType=notify\nExecStart=/usr/libexec/part-"
                                      + std::to_string(i) + " --system\nRestart=on-failure\n",
                                  i % 5 == 0));
        if (i % 5 == 0)
            fs::create_symlink(vendor / name, admin / "multi-user.target.wants" / name);
        if (i < dropIns)
            write(vendor / (name + ".d/10-distribution.conf"), "[Service]\nTimeoutStopSec=10\n");
    }
    for (int i = 0; i < timers; ++i)
        write(vendor / ("part-" + std::to_string(services - 1 - i) + ".timer"),
              unit("[Timer]\nOnCalendar=daily\nPersistent=true\n", i % 2 == 0));
    for (int i = 0; i < sockets; ++i)
        write(vendor / ("part-" + std::to_string(i) + ".socket"),
              unit("[Socket]\nListenStream=/run/part\n", i % 3 == 0));
    for (int i = 0; i < others; ++i)
        write(vendor / ("part-" + std::to_string(i) + ".target"), unit("", false));
    for (int i = 0; i < entries; ++i)
        write(root / "etc/xdg/autostart" / ("org.example.part" + std::to_string(i) + ".desktop"),
              "[Desktop Entry]\nType=Application\nName=Part\nName[de]=Teil\nExec=/usr/libexec/part "
              "--session\nOnlyShowIn=GNOME;\nX-GNOME-AutoRestart=true\n");
    for (int i = 0; i < tables; ++i)
        write(root / "etc/cron.d" / ("part-" + std::to_string(i)),
              "SHELL=/bin/sh\n*/5 * * * * root /usr/libexec/part --hourly\n");
}

Journal journalOf(const Snapshot& snapshot) {
    Journal journal;
    for (std::size_t i = 0; i < Journal::snapshotLimit; ++i) {
        Snapshot next = snapshot;
        next.id = Uuid::random();
        journal.append(Shared(std::move(next)), /*comparingPrevious=*/false);
    }
    return journal;
}

/// Megabytes that the journal of a document takes in memory.
double megabytesOf(const std::string& document) {
    const auto before = ::mallinfo2();
    const auto journal = json::decode<Journal>(document);
    const auto after = ::mallinfo2();
    return static_cast<double>(after.uordblks + after.hblkhd - before.uordblks - before.hblkhd)
           / 1e6;
}

} // namespace

int main() {
    const bench::Workspace workspace;
    makeMachine(workspace.path());
    const ObservationOptions options(std::vector<ApplicationRoot>{}, {}, {},
                                     MachineFiles::below(workspace.path()));
    Snapshot snapshot = SystemObserver::capture(options);
    if (!snapshot.coverage.issues.empty())
        throw std::runtime_error(snapshot.coverage.issues.front());
    const double took = bench::medianOf(
        rounds, [&] { return bench::seconds([&] { SystemObserver::capture(options); }); });
    bench::row("services of a full desktop, warm", took * 1e3, "ms", 40);
    bench::row("records of them", static_cast<double>(snapshot.backgroundItems->size()), "");
    const std::string with = json::encoded(journalOf(snapshot));
    const double memory = megabytesOf(with);
    snapshot.backgroundItems = {};
    snapshot.coverage.backgroundRoots.emplace({});
    const std::string without = json::encoded(journalOf(snapshot));
    bench::row("what they add to a document of 720 snapshots",
               static_cast<double>(with.size() - without.size()) / 1e6, "MB");
    bench::row("what they add to it in memory", memory - megabytesOf(without), "MB", 2);
}
