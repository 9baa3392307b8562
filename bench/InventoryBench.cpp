#include "bench/Report.h"
#include "bench/Workspace.h"
#include "core/capture/StandardRoots.h"
#include "core/capture/SystemObserver.h"
#include "core/packages/PackageIndex.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

// Takes the inventory of a full Linux desktop, whose files are made in a folder: the records of
// dpkg, desktop entries, units with drop-ins and links, and start-up entries.
using namespace tidemark;
namespace fs = std::filesystem;

namespace {

constexpr int packages = 1'200;
/// As many as on a desktop of 855 packages, whose lists have 8.7 MB.
constexpr int filesPerPackage = 130;
constexpr int entries = 400;
constexpr int translations = 60;
constexpr int units = 700;
constexpr int startEntries = 60;
constexpr int rounds = 21;

void write(const fs::path& file, const std::string& text) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << text;
}

std::string numbered(const std::string& name, int number) {
    return name + std::to_string(number);
}

std::string unitPath(int number) {
    return numbered("/usr/lib/systemd/system/daemon", number) + ".service";
}

std::string entryPath(int number) {
    return numbered("/usr/share/applications/org.example.application", number) + ".desktop";
}

void writePackage(const fs::path& info, int number, std::string& status) {
    const std::string name = numbered("package", number);
    status += "Package: " + name
              + "\nStatus: install ok installed\nPriority: optional\nSection: utils\n"
                "Installed-Size: 1234\nMaintainer: A Person <person@example.org>\n"
                "Architecture: amd64\nVersion: 1:2.4."
              + std::to_string(number)
              + "-3+deb12u1\nDepends: libc6 (>= 2.34), libstdc++6 (>= 11)\nDescription: a program\n"
                " that does what its description says, at some length.\n\n";
    std::string list = "/.\n/usr\n/usr/share\n";
    for (int i = 0; i < filesPerPackage; ++i)
        list += "/usr/share/" + name + numbered("/resources/of/this/package/file", i) + ".data\n";
    if (number < entries)
        list += entryPath(number) + "\n";
    if (number < units)
        list += unitPath(number).substr(4) + "\n";
    write(info / (name + ".list"), list);
}

void writeDatabase(const fs::path& root) {
    const fs::path folder = root / "var/lib/dpkg";
    fs::create_directories(folder / "updates");
    write(folder / "info/format", "1\n");
    std::string status;
    for (int i = 0; i < packages; ++i)
        writePackage(folder / "info", i, status);
    write(folder / "status", status);
}

std::string desktopEntry(int number) {
    std::string text = "[Desktop Entry]\nType=Application\nVersion=1.0\n"
                       + numbered("Name=Application ", number) + "\n";
    for (int i = 0; i < translations; ++i)
        text += numbered("Name[x", i) + "]=An application by another name\n"
                + numbered("Comment[x", i) + "]=A sentence that says what the application does\n";
    return text + "Exec=/usr/bin/application %U\nIcon=application\nCategories=Utility;\n";
}

/// Writes one unit. Every third unit is enabled by a link, every tenth has a drop-in.
void writeUnit(const fs::path& root, int number) {
    const std::string path = unitPath(number);
    write(root.native() + path,
          "[Unit]\nDescription=A daemon\nAfter=network.target\n\n[Service]\nType=notify\n"
          "ExecStart=/usr/sbin/daemon --serve \\\n    --quietly\nRestart=on-failure\n"
          "User=daemon\nProtectSystem=strict\n\n[Install]\nWantedBy=multi-user.target\n");
    const fs::path administrator = root / "etc/systemd/system";
    const std::string name = fs::path(path).filename();
    if (number % 3 == 0) {
        fs::create_directories(administrator / "multi-user.target.wants");
        fs::create_symlink(path, administrator / "multi-user.target.wants" / name);
    }
    if (number % 10 == 0)
        write(administrator / (name + ".d") / "override.conf", "[Service]\nNice=5\n");
}

void writeMachine(const fs::path& root) {
    fs::create_directories(root / "usr/lib");
    fs::create_symlink("usr/lib", root / "lib");
    writeDatabase(root);
    for (int i = 0; i < entries; ++i)
        write(root.native() + entryPath(i), desktopEntry(i));
    for (int i = 0; i < units; ++i)
        writeUnit(root, i);
    for (int i = 0; i < startEntries; ++i)
        write(root / "etc/xdg/autostart" / (numbered("start", i) + ".desktop"), desktopEntry(i));
}

ObservationOptions optionsOf(const fs::path& root) {
    const StandardRoots::Places places{.machine = MachineFiles::below(root), .home = "/home/me"};
    auto background = StandardRoots::agents(places);
    std::ranges::move(StandardRoots::daemons(places), std::back_inserter(background));
    ObservationOptions options(StandardRoots::applications(places), std::move(background));
    options.machine = places.machine;
    return options;
}

double capture(const ObservationOptions& options, PackageIndex& index) {
    return bench::seconds([&] {
        const auto snapshot = SystemObserver::captureProgressively(
            options, nullptr, [](const std::string&) {}, Clock::system(), {}, &index);
        if (snapshot.applications->size() != entries
            || snapshot.backgroundItems->size() != units + startEntries
            || !snapshot.coverage.issues.empty()
            || snapshot.applications->front()->version == "Unknown version")
            throw std::runtime_error("the inventory is not complete");
    });
}

} // namespace

int main() {
    const bench::Workspace workspace;
    writeMachine(workspace.path());
    const auto options = optionsOf(workspace.path());

    const double first = bench::medianOf(rounds, [&] {
        PackageIndex fresh;
        return capture(options, fresh);
    });
    bench::row("inventory of a full desktop, warm", first * 1e3, "ms", 60);
    PackageIndex kept;
    capture(options, kept);
    const double again = bench::medianOf(rounds, [&] { return capture(options, kept); });
    bench::row("the same with an unchanged package database", again * 1e3, "ms", 20);
}
