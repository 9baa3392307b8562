#include "core/capture/SystemObserver.h"

#include "core/base/Text.h"
#include "core/base/Utf8.h"
#include "core/capture/ApplicationsCollector.h"
#include "core/capture/BackgroundCollector.h"
#include "core/storage/BatchedWalk.h"
#include "core/storage/ComponentStorageScanner.h"
#include "core/storage/StorageMeasurementError.h"
#include "core/system/SystemFacts.h"
#include "core/system/TrashFolder.h"

#include <algorithm>
#include <cmath>

namespace tidemark::SystemObserver {

namespace {

namespace fs = std::filesystem;

/// The most entries of a root that a progressive capture measures without a scanner.
constexpr std::int64_t entryLimit = 1'000'000;
/// The most entries of a root that `capture` measures.
constexpr std::int64_t quickEntryLimit = 100'000;
/// Seconds that `capture` may take for one root.
constexpr double quickBudget = 3;
/// Seconds until the size of an application bundle is measured again.
constexpr double bundleRefreshInterval = 86'400;

constexpr const char* bundleNote =
    "Application storage records individual app bundles, not all files in Applications. "
    "Last-measured sizes may have different dates; unfinished bundles do not contribute a size.";

std::string nameOf(const fs::path& root) {
    const std::string_view name = lastPathComponent(root.native());
    // The Trash of a Linux desktop is a folder named "files".
    return TrashFolder::is(root.native()) && name != ".Trash" ? "Trash" : textFromBytes(name);
}

std::string storageIssue(const fs::path& root, std::string_view rest) {
    return "Storage · " + nameOf(root) + ": " + std::string(rest);
}

std::string noComparison(const fs::path& root, StorageMeasurementFailure failure) {
    return storageIssue(root, std::string(rawValue(failure)) + " No size comparison was made.");
}

std::string of(std::int64_t count, std::int64_t total) {
    return std::to_string(count) + " of " + std::to_string(total);
}

template <class Record>
void takeInventory(Inventory<Record>& found, Shared<std::vector<Shared<Record>>>& items,
                   Shared<std::set<std::string>>& roots, std::set<std::string>& excludedPaths,
                   Coverage& coverage) {
    items.emplace(std::move(found.items));
    roots.emplace(std::set(found.roots));
    std::ranges::copy(found.issues, std::back_inserter(coverage.issues));
    std::ranges::copy(found.notes, std::back_inserter(*coverage.notes));
    excludedPaths.insert(found.excludedPaths.begin(), found.excludedPaths.end());
}

/// Excludes each incomplete root from the comparison: an item that was not read there may still be
/// on disk, and would be reported as removed if a complete root contains the incomplete one. An
/// incomplete root that contains a complete one, and lies in none, is not excluded, because that
/// would exclude the complete one as well.
void excludeIncomplete(const std::set<std::string>& incomplete,
                       const std::set<std::string>& complete, const Coverage& coverage,
                       std::set<std::string>& excludedPaths) {
    const auto isAtOrBelow = [](const std::string& root) {
        return [&root](const std::string& path) { return path == root || isBelow(path, root); };
    };
    for (const std::string& root : incomplete) {
        const bool isInsideComplete = std::ranges::any_of(
            complete, [&](const std::string& around) { return isBelow(root, around); });
        const bool holdsComplete =
            std::ranges::any_of(*coverage.applicationRoots, isAtOrBelow(root))
            || std::ranges::any_of(*coverage.backgroundRoots, isAtOrBelow(root));
        if (isInsideComplete || !holdsComplete)
            excludedPaths.insert(root);
    }
}

/// Measures a small root in one go.
StorageTraversal::Result measureQuickly(const fs::path& root, Clock& clock,
                                        const std::stop_token& stop) {
    auto walk = StorageTraversal::open(root, quickEntryLimit);
    if (!walk)
        return std::unexpected(walk.error());
    const double deadline = clock.monotonicSeconds() + quickBudget;
    while (true) {
        if (stop.stop_requested())
            return std::unexpected(StorageMeasurementFailure::cancelled);
        if (clock.monotonicSeconds() > deadline)
            return std::unexpected(StorageMeasurementFailure::timeLimit);
        if (auto result = walk->step())
            return *result;
    }
}

/// Measures a root for a progressive capture without a scanner, in batches with pauses between
/// them.
StorageTraversal::Result measureInBatches(const fs::path& root, double seconds, Clock& clock,
                                          const std::stop_token& stop) {
    auto walk = StorageTraversal::open(root, entryLimit);
    if (!walk)
        return std::unexpected(walk.error());
    const WalkBudget budget{.deadline = clock.monotonicSeconds() + seconds};
    auto run = walkInBatches(*walk, budget, clock, stop);
    if (!run)
        return std::unexpected(run.error());
    return *run;
}

/// Adds a note when a folder has so many files of its own that their names are not recorded.
void noteFileNames(const auto& measured, const fs::path& root, Coverage& coverage) {
    if (!measured.directFileSizes)
        coverage.notes->push_back(
            storageIssue(root, "The folder has more than 10,000 files of its own. Their total size "
                               "is recorded, but not their names."));
}

void take(StorageTraversal::Result result, const fs::path& root, Snapshot& snapshot) {
    if (!result) {
        snapshot.coverage.issues.push_back(noComparison(root, result.error()));
        return;
    }
    noteFileNames(*result, root, snapshot.coverage);
    snapshot.folders.emplace_back(*std::move(result));
}

void takeVolume(const fs::path& home, Snapshot& snapshot) {
    const auto space = SystemFacts::volumeSpace(home);
    snapshot.freeBytes = space.freeBytes;
    snapshot.volumeID = space.volumeID;
    snapshot.volumeContext = SystemFacts::readVolumeContext(home);
}

/// The folders whose files may belong to packages.
OwnedFolders foldersOf(const ObservationOptions& options) {
    OwnedFolders folders;
    for (const auto& root : options.applicationRoots)
        folders.push_back(options.machine.canonical(root.path).native());
    for (const auto& root : options.backgroundRoots)
        folders.push_back(options.machine.canonical(root.path).native());
    return folders;
}

/// Finds applications and background items, and measures `storageRoots`.
Snapshot inventory(const ObservationOptions& options, const std::vector<fs::path>& storageRoots,
                   PackageIndex& packages, Clock& clock, const std::stop_token& stop) {
    Snapshot snapshot;
    Coverage& coverage = snapshot.coverage;
    coverage.notes.emplace();
    std::set<std::string> excludedPaths;
    auto reading = packages.read(options.machine, foldersOf(options), stop);
    auto applications = ApplicationsCollector::collect(
        options.applicationRoots, clock, stop, {.machine = options.machine, .packages = &reading});
    takeInventory(applications, snapshot.applications, coverage.applicationRoots, excludedPaths,
                  coverage);
    auto background =
        BackgroundCollector::collect(options.backgroundRoots, *snapshot.applications, clock, stop,
                                     BackgroundCollector::formats, options.machine, &reading);
    takeInventory(background, snapshot.backgroundItems, coverage.backgroundRoots, excludedPaths,
                  coverage);
    excludeIncomplete(applications.incompleteRoots, applications.roots, coverage, excludedPaths);
    excludeIncomplete(background.incompleteRoots, background.roots, coverage, excludedPaths);
    coverage.excludedPaths.emplace(std::move(excludedPaths));
    for (const fs::path& root : storageRoots)
        take(measureQuickly(root, clock, stop), root, snapshot);

    // What is mounted on this machine says nothing about the volumes of another one.
    if (!options.machine.isElsewhere())
        takeVolume(SystemFacts::homeDirectory(), snapshot);
    snapshot.id = Uuid::random();
    snapshot.timestamp = clock.now();
    return snapshot;
}

/// Calls `beginCapture` and, however the capture ends, `endCapture` of the scanner.
class ScannerCapture {
public:
    explicit ScannerCapture(ComponentStorageScanner* scanner) : scanner(scanner) {
        if (scanner)
            scanner->beginCapture();
    }
    ~ScannerCapture() {
        if (scanner)
            scanner->endCapture();
    }
    ScannerCapture(const ScannerCapture&) = delete;
    ScannerCapture& operator=(const ScannerCapture&) = delete;

private:
    ComponentStorageScanner* scanner;
};

/// Records how long a phase took and whether it finished without a new issue.
class Phase {
public:
    Phase(std::string name, Snapshot& snapshot, Clock& clock)
        : name(std::move(name)), snapshot(snapshot), clock(clock), start(clock.monotonicSeconds()),
          issues(snapshot.coverage.issues.size()) {}
    ~Phase() {
        snapshot.scanTimings->push_back(
            {name, clock.monotonicSeconds() - start, snapshot.coverage.issues.size() == issues});
    }
    Phase(const Phase&) = delete;
    Phase& operator=(const Phase&) = delete;

private:
    std::string name;
    Snapshot& snapshot;
    Clock& clock;
    double start;
    std::size_t issues;
};

/// The part of a progressive capture that follows the inventory: measuring the storage roots.
class StorageRun {
public:
    StorageRun(const ObservationOptions& options, ComponentStorageScanner* scanner,
               const Progress& progress, Snapshot& snapshot, Clock& clock,
               const std::stop_token& stop)
        : options(options), scanner(scanner), progress(progress), snapshot(snapshot), clock(clock),
          stop(stop), deadline(clock.monotonicSeconds() + storageBudget) {}

    void measure() {
        std::vector<ApplicationRoot> deferred;
        for (const fs::path& root : shortestFirst(options.storageRoots)) {
            if (scanner && isApplications(root) && mayHoldBundles(root))
                deferred.emplace_back(root, familyOf(root));
            else
                measureRoot(root);
        }
        if (!deferred.empty())
            measureBundles(deferred);
        if (scanner)
            saveMeasurements();
    }

private:
    double remaining() { return deadline - clock.monotonicSeconds(); }
    void addIssue(std::string issue) { snapshot.coverage.issues.push_back(std::move(issue)); }

    /// Parents before the folders nested in them: the walk of the parent measures these as well.
    static std::vector<fs::path> shortestFirst(std::vector<fs::path> roots) {
        std::ranges::stable_sort(roots, {}, [](const fs::path& root) {
            std::size_t characters = 0;
            for (std::size_t place = 0; place < root.native().size(); ++characters)
                utf8::next(root.native(), place);
            return characters;
        });
        return roots;
    }

    /// The root of applications at `folder`; null when there is none, and for another machine.
    const ApplicationRoot* applicationRoot(const fs::path& folder) const {
        if (options.machine.isElsewhere())
            return nullptr;
        const auto found =
            std::ranges::find_if(options.applicationRoots, [&](const ApplicationRoot& other) {
                return canonicalPath(other.path) == canonicalPath(folder);
            });
        return found == options.applicationRoots.end() ? nullptr : &*found;
    }

    RootFamily familyOf(const fs::path& folder) const {
        const auto* root = applicationRoot(folder);
        return root ? root->family : RootFamily::any;
    }

    /// True for a folder of applications: if it has bundles, they are measured one by one.
    bool isApplications(const fs::path& root) const {
        return lastPathComponent(root.native()) == "Applications" || applicationRoot(root);
    }

    /// Also true when something in the folder could not be read: it may be a bundle that is being
    /// replaced and has no readable property list at the moment.
    bool mayHoldBundles(const fs::path& root) const {
        const auto found = bundlesIn({{root, familyOf(root)}});
        return !found.items.empty() || !found.issues.empty() || stop.stop_requested();
    }

    /// The applications that are folders; the others have no size of their own.
    Inventory<Application> bundlesIn(const std::vector<ApplicationRoot>& roots) const {
        return ApplicationsCollector::collect(roots, clock, stop, {.foldersOnly = true});
    }

    void measureRoot(const fs::path& root) {
        const std::string name = nameOf(root);
        progress("Scanning " + (name == ".Trash" ? "Trash" : name) + "…");
        const Phase phase(name, snapshot, clock);
        const double left = remaining();
        if (left <= 0 || stop.stop_requested())
            addIssue(storageIssue(root, "The overall storage scan was paused or reached its time "
                                        "limit. No size comparison was made."));
        else if (scanner)
            measureByChildren(root, std::min(left, rootBudget));
        else
            take(measureInBatches(root, std::min(left, rootBudget), clock, stop), root, snapshot);
    }

    void measureByChildren(const fs::path& root, double seconds) {
        try {
            takeReport(root, scanner->collectFolder(root, seconds, stop));
        } catch (const StorageMeasurementError& error) {
            addPreservingIssue(root, error.what());
        } catch (const std::exception&) {
            addPreservingIssue(root, "Could not completely read or save this folder.");
        }
    }

    void addPreservingIssue(const fs::path& root, std::string_view message) {
        addIssue(storageIssue(root, std::string(message)
                                        + " Earlier sizes are preserved; no partial total is "
                                          "compared."));
    }

    void takeReport(const fs::path& root, FolderStorageReport report) {
        noteFileNames(report, root, snapshot.coverage);
        auto size = report.folderSize();
        const auto total = static_cast<std::int64_t>(report.children.records.size());
        if (!size) {
            addIssue(storageIssue(root, of(report.children.measuredCount(), total)
                                            + " child folders measured. Completed measurements "
                                              "are retained; unfinished work continues on later "
                                              "checks."));
        } else {
            snapshot.folders.emplace_back(*std::move(size));
            if (report.children.matchingCount() < total)
                addIssue(storageIssue(root, "Some child-folder sizes are awaiting refresh. The "
                                            "displayed total retains their earlier dated "
                                            "measurements."));
        }
        if (!snapshot.folderStorage)
            snapshot.folderStorage.emplace();
        snapshot.folderStorage->push_back(std::move(report));
    }

    void measureBundles(const std::vector<ApplicationRoot>& roots) {
        progress("Scanning Application Bundles…");
        const Phase phase("Application Bundle Sizes", snapshot, clock);
        const auto found = bundlesIn(roots);
        for (const auto& issue : found.issues)
            addIssue(issue);
        std::vector<StorageMeasurementItem> items;
        items.reserve(found.items.size());
        for (const auto& application : found.items)
            items.push_back(StorageMeasurementItem::application(*application));
        try {
            takeBundles(scanner->collect(items, std::max(0.0, std::floor(remaining())),
                                         bundleRefreshInterval, {}, stop));
        } catch (const std::exception& error) {
            addIssue("Application size history could not be read or saved. Existing data was "
                     "preserved. "
                     + std::string(error.what()));
        }
    }

    void saveMeasurements() {
        try {
            scanner->save();
        } catch (const std::exception& error) {
            addIssue("Folder size history could not be saved. It will be retried on later checks. "
                     + std::string(error.what()));
        }
    }

    void takeBundles(StorageMeasurementReport report) {
        for (const auto& record : report.records)
            if (auto size = record->folderSize())
                snapshot.folders.emplace_back(std::move(*size));
        snapshot.coverage.notes->push_back(bundleNote);
        const auto total = static_cast<std::int64_t>(report.records.size());
        if (const std::int64_t matching = report.matchingCount(); matching < total)
            addIssue("Application storage: " + of(matching, total)
                     + " app bundles have measurements matching their observed metadata. "
                       "Remaining measurements will be retried on later checks; existing sizes "
                       "are retained with their dates.");
        snapshot.applicationStorage = std::move(report);
    }

    const ObservationOptions& options;
    ComponentStorageScanner* scanner;
    const Progress& progress;
    Snapshot& snapshot;
    Clock& clock;
    const std::stop_token& stop;
    double deadline;
};

} // namespace

Snapshot capture(const ObservationOptions& options, Clock& clock, const std::stop_token& stop) {
    PackageIndex packages;
    return inventory(options, options.storageRoots, packages, clock, stop);
}

Snapshot captureProgressively(const ObservationOptions& options, ComponentStorageScanner* scanner,
                              const Progress& progress, Clock& clock, const std::stop_token& stop,
                              PackageIndex* packages) {
    PackageIndex packagesOfThisCapture;
    const double start = clock.monotonicSeconds();
    progress(inventoryPhase);
    Snapshot snapshot;
    {
        const ScannerCapture bracket(scanner);
        if (scanner)
            scanner->retainCursors(options.storageRoots);
        snapshot =
            inventory(options, {}, packages ? *packages : packagesOfThisCapture, clock, stop);
        snapshot.scanTimings = {ScanTiming{"Applications and Background Inventory",
                                           clock.monotonicSeconds() - start,
                                           snapshot.coverage.issues.empty()}};
        StorageRun(options, scanner, progress, snapshot, clock, stop).measure();
    }
    snapshot.timestamp = clock.now();
    snapshot.captureDuration = clock.monotonicSeconds() - start;
    progress(savingPhase);
    return snapshot;
}

} // namespace tidemark::SystemObserver
