#include "demo/history/MadeUpMachine.h"

#include "core/base/Digest.h"
#include "core/base/Text.h"
#include "demo/history/Units.h"

#include <algorithm>
#include <stdexcept>

namespace tidemark::demo {

namespace {

constexpr const char* home = "/home/ada";
constexpr const char* trash = "/home/ada/.local/share/Trash/files";

struct NamedVersion {
    const char* name;
    const char* version;
};
constexpr NamedVersion installed[] = {
    {"Almanac", "3.2"},     {"Archive Manager", "43.0"},
    {"Atlas", "2.8"},       {"Bookshelf", "1.14"},
    {"Calculator", "43"},   {"Camera", "5.1"},
    {"Chess", "4.4"},       {"Contacts", "43.1"},
    {"Darkroom", "4.2"},    {"Diagram", "0.97"},
    {"Draw", "4.0"},        {"Ledger", "2.6"},
    {"Letters", "7.4"},     {"Lighthouse", "1.9"},
    {"Maps", "43.4"},       {"Mixer", "3.1"},
    {"Model Room", "2.93"}, {"Notes", "6.1"},
    {"Photos", "43.0"},     {"Planetarium", "1.2"},
    {"Podcasts", "1.6"},    {"Reader", "43.1"},
    {"Scanner", "42.5"},    {"Score", "4.1"},
    {"Sheets", "7.4"},      {"Slides", "7.4"},
    {"Solitaire", "3.22"},  {"Spellbook", "0.9"},
    {"Studio", "22.12"},    {"Sudoku", "42.0"},
    {"Terminal", "3.46"},   {"Text Editor", "43.2"},
    {"Timetable", "1.3"},   {"Tone", "3.2"},
    {"Typewriter", "2.0"},  {"Video Player", "43.0"},
    {"Weather", "43.0"},    {"Web", "43.1"},
    {"Workbench", "1.74"},  {"Workshop", "9.0"},
};

std::string lowered(std::string name) {
    for (char& c : name)
        c = c == ' ' ? '-' : static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return name;
}

std::string identifierOf(const std::string& name) {
    return "org.example." + lowered(name);
}

Application applicationOf(const std::string& name, const std::string& version) {
    return {identifierOf(name),
            name,
            version,
            "",
            "/usr/share/applications/" + identifierOf(name) + ".desktop",
            {}};
}

BackgroundItem serviceOf(const std::string& application, const std::string& name) {
    BackgroundItem item;
    item.identifier = identifierOf(application) + "." + name;
    item.path = std::string(home) + "/.config/systemd/user/" + lowered(application) + "-" + name
                + ".service";
    item.program = "/usr/lib/" + lowered(application) + "/" + name;
    item.safeSettings = {{"RunAtLoad", "Yes"}, {"KeepAlive", "No"}};
    item.definitionFingerprints = {{"ProgramArguments", Sha256::hex(item.path)}};
    item.associatedAppID = identifierOf(application);
    item.association = "Program of the same package";
    return item;
}

/// The parts of a subfolder of this size: three, that stand in a fixed proportion.
SizeByName partsOf(std::int64_t bytes) {
    return {{std::string(FolderSize::filesInFolder), bytes / 20},
            {"cache", bytes / 4},
            {"data", bytes - bytes / 20 - bytes / 4}};
}

std::int64_t sumOf(const SizeByName& sizes) {
    std::int64_t sum = 0;
    for (const auto& [name, bytes] : sizes)
        sum += bytes;
    return sum;
}

template <class Record>
std::vector<Shared<Record>> sharedCopies(const std::vector<Record>& records) {
    std::vector<Shared<Record>> copies;
    for (const Record& each : records)
        copies.emplace_back(Record(each));
    return copies;
}

/// The last number of a version, plus one.
std::string nextVersion(const std::string& version) {
    const auto dot = version.rfind('.');
    if (dot == std::string::npos)
        return version + ".1";
    return version.substr(0, dot + 1) + std::to_string(std::stoi(version.substr(dot + 1)) + 1);
}

} // namespace

MadeUpMachine::MadeUpMachine() {
    for (const auto& [name, version] : installed)
        applications.push_back(applicationOf(name, version));
    for (const auto& [application, name] :
         std::initializer_list<std::pair<const char*, const char*>>{{"Letters", "notifier"},
                                                                    {"Photos", "indexer"},
                                                                    {"Tone", "server"},
                                                                    {"Weather", "updater"},
                                                                    {"Web", "updater"},
                                                                    {"Workbench", "helper"}})
        services.push_back(serviceOf(application, name));
    folders = {
        {"Projects",
         "/home/ada/Projects",
         {{"archive", 7 * gigabyte},
          {"datasets", 24 * gigabyte},
          {"docs", 4 * gigabyte},
          {"game-assets", 11 * gigabyte},
          {"node_modules", 4 * gigabyte},
          {"photos", 2200 * megabyte},
          {"site", 2200 * megabyte},
          {"target", 12 * gigabyte},
          {"videos", 16 * gigabyte}},
         {{"README.md", 4 * megabyte}, {"backup.tar", 420 * megabyte}}},
        {"Pictures",
         "/home/ada/Pictures",
         {{"2023", 9 * gigabyte},
          {"2024", 14 * gigabyte},
          {"2025", 17 * gigabyte},
          {"2026", 6 * gigabyte},
          {"Screenshots", 800 * megabyte}},
         {}},
        {"Downloads",
         "/home/ada/Downloads",
         {{"installers", 3 * gigabyte}, {"papers", 900 * megabyte}},
         {{"debian-12.8.0-amd64-netinst.iso", 661 * megabyte},
          {"lecture-07.mp4", 1200 * megabyte},
          {"tax-2025.pdf", 3 * megabyte}}},
        {"Documents",
         "/home/ada/Documents",
         {{"Letters", 400 * megabyte}, {"Scans", 5 * gigabyte}, {"University", 8 * gigabyte}},
         {{"Budget.ods", 2 * megabyte}}},
        {"Music", "/home/ada/Music", {{"Albums", 31 * gigabyte}, {"Recordings", 9 * gigabyte}}, {}},
        {"Machines", "/home/ada/Machines", {{"images", 6 * gigabyte}}, {}, "snapshots"},
    };
}

Application& MadeUpMachine::application(const std::string& name) {
    const auto found = std::ranges::find(applications, name, &Application::name);
    if (found == applications.end())
        throw std::invalid_argument(name);
    return *found;
}

void MadeUpMachine::updateApplication(const std::string& name) {
    auto& updated = application(name);
    updated.version = nextVersion(updated.version);
}

void MadeUpMachine::install(const std::string& name, const std::string& version) {
    applications.push_back(applicationOf(name, version));
    std::ranges::sort(applications, {}, &Application::path);
}

void MadeUpMachine::remove(const std::string& name) {
    std::erase_if(applications, [&](const Application& each) { return each.name == name; });
}

void MadeUpMachine::addService(const std::string& application, const std::string& name) {
    services.push_back(serviceOf(application, name));
    std::ranges::sort(services, {}, &BackgroundItem::path);
}

void MadeUpMachine::grow(const std::string& folder, const std::string& child, std::int64_t bytes) {
    const auto found = std::ranges::find(folders, folder, &Folder::name);
    if (found == folders.end())
        throw std::invalid_argument(folder);
    auto& size = found->children[child];
    size = std::max<std::int64_t>(50 * megabyte, size + bytes);
    freeBytes -= bytes;
}

void MadeUpMachine::throwAway(std::int64_t items, std::int64_t bytes) {
    trashItems += items;
    trashBytes += bytes;
}

void MadeUpMachine::emptyTrash() {
    freeBytes += trashBytes;
    trashItems = trashBytes = 0;
}

FolderStorageReport MadeUpMachine::report(const Folder& folder, Date at) const {
    FolderStorageReport made;
    made.path = folder.path;
    made.name = folder.name;
    made.sampledAt = made.children.observedAt = at;
    made.directFileBytes = sumOf(folder.files);
    made.directAllocatedBytes = made.directFileBytes;
    made.directFileSizes.emplace(SizeByName(folder.files));
    made.itemCount = static_cast<std::int64_t>(folder.children.size() + folder.files.size());
    const auto record = [&](const std::string& name) {
        StorageMeasurementRecord known;
        known.item.emplace(StorageMeasurementItem::directory(folder.path + "/" + name, {}));
        known.attemptedAt = at;
        return known;
    };
    for (const auto& [name, bytes] : folder.children) {
        auto known = record(name);
        known.bytes = known.allocatedBytes = bytes;
        known.measuredAt = at;
        known.measuredItem.emplace(StorageMeasurementItem(*known.item));
        known.breakdown.emplace(partsOf(bytes));
        known.breakdownComplete = true;
        made.children.records.emplace_back(std::move(known));
    }
    if (!folder.unmeasured.empty()) {
        auto unknown = record(folder.unmeasured);
        unknown.attempts = 1;
        unknown.issue = "This folder couldn’t be read completely.";
        made.children.records.emplace_back(std::move(unknown));
    }
    return made;
}

Snapshot MadeUpMachine::captured(Date at, std::optional<double> interval) const {
    Snapshot snapshot;
    snapshot.id = Uuid::random();
    snapshot.timestamp = at;
    snapshot.applications.emplace(sharedCopies(applications));
    snapshot.backgroundItems.emplace(sharedCopies(services));
    auto& reports = snapshot.folderStorage.emplace();
    for (const auto& folder : folders) {
        reports.push_back(report(folder, at));
        if (auto size = reports.back().folderSize())
            snapshot.folders.emplace_back(*std::move(size));
    }
    FolderSize thrown;
    thrown.path = trash;
    thrown.name = "Trash";
    thrown.bytes = trashBytes;
    thrown.itemCount = trashItems;
    thrown.measuredAt = at;
    snapshot.folders.emplace_back(std::move(thrown));
    std::ranges::sort(snapshot.folders, {}, [](const auto& each) { return each->path; });
    snapshot.freeBytes = freeBytes;
    snapshot.volumeID = "0E239BC6-F960-3107-89CF-1C97F78BB46B";
    snapshot.volumeContext = VolumeContext{.name = "System",
                                           .capacity = 512 * gigabyte,
                                           .fileSystem = "ext4",
                                           .local = true,
                                           .internalDevice = true,
                                           .readOnly = false};
    snapshot.coverage.applicationRoots.emplace({"/usr/share/applications"});
    snapshot.coverage.backgroundRoots.emplace({std::string(home) + "/.config/systemd/user"});
    snapshot.operatingSystem = OperatingSystemObservation{system, {}};
    snapshot.expectedCaptureInterval = interval;
    return snapshot;
}

} // namespace tidemark::demo
