#include "cli/Console.h"
#include "cli/OutputFile.h"
#include "cli/ProgressLine.h"
#include "cli/TerminalCommands.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Documents.h"
#include "core/base/JsonEncoder.h"
#include "core/capture/AdditionalObservations.h"
#include "core/capture/StandardRoots.h"
#include "core/capture/SystemObserver.h"
#include "core/storage/ComponentStorageScanner.h"
#include "core/system/SystemFacts.h"
#include "recorder/Interruption.h"
#include "recorder/ObservationSummary.h"
#include "recorder/OwnFiles.h"
#include "recorder/TypedInvocation.h"

#include <algorithm>

namespace tidemark {

namespace {

using Paths = std::vector<std::filesystem::path>;

struct ObserveOptions {
    /// The root folder of another machine, to be observed instead of this one.
    std::optional<FilePath> root;
    /// Folders of the observed machine. Without `applications`, and without both `agents` and
    /// `daemons`, the standard folders of the system and of the user's home; without `storage`,
    /// none.
    std::vector<FilePath> applications;
    std::vector<FilePath> agents;
    std::vector<FilePath> daemons;
    std::vector<FilePath> storage;
    /// The additional sources.
    bool homebrew = false;
    bool diagnostics = false;
    std::vector<FilePath> config;
    /// The file that keeps finished measurements from one run to the next.
    std::optional<FilePath> measurements;
    /// The file for the snapshot, in the form of the stored JSON.
    std::optional<FilePath> output;
    bool json = false;

    static constexpr auto fields() {
        constexpr OptionForm folder{.valueName = "DIR"};
        // Options that can't be given with --root: their sources are read only on this
        // machine.
        constexpr OptionForm here{.excludes = {"root"}};
        constexpr OptionForm folderHere{.excludes = {"root"}, .valueName = "DIR"};
        constexpr OptionForm fileHere{.excludes = {"root"}, .valueName = "FILE"};
        return std::tuple{
            Option{"root", &ObserveOptions::root,
                   "Observe the machine whose root folder is DIR instead of this one", folder},
            Option{"applications", &ObserveOptions::applications,
                   "Folder to search for applications", folder},
            Option{"agents", &ObserveOptions::agents, "Folder of agent definitions", folder},
            Option{"daemons", &ObserveOptions::daemons, "Folder of daemon definitions", folder},
            Option{"storage", &ObserveOptions::storage, "Folder to measure", folderHere},
            Option{"homebrew", &ObserveOptions::homebrew, "Add the installed Homebrew formulas",
                   here},
            Option{"diagnostics", &ObserveOptions::diagnostics, "Add the diagnostic reports", here},
            Option{"config", &ObserveOptions::config, "Configuration file to fingerprint",
                   fileHere},
            Option{"measurements", &ObserveOptions::measurements,
                   "File that keeps finished measurements for the next run", fileHere},
            Option{"output",
                   &ObserveOptions::output,
                   "File to write the observation to, as stored JSON",
                   {.letter = 'o', .valueName = "FILE"}},
            Option{"json", &ObserveOptions::json, "Print the observation as stored JSON"}};
    }
};

constexpr std::int64_t entriesPerSlice = 1'000'000;

/// The canonical paths, without duplicates.
Paths canonical(const std::vector<FilePath>& paths) {
    Paths result;
    for (const auto& given : paths)
        if (auto path = canonicalPath(given.path());
            std::ranges::find(result, path) == result.end())
            result.push_back(std::move(path));
    return result;
}

ObservationOptions observationOptions(const ObserveOptions& options) {
    using enum BackgroundItem::Kind;
    const auto places = StandardRoots::Places::current(
        options.root ? MachineFiles::below(options.root->path()) : MachineFiles());
    std::optional<std::vector<ApplicationRoot>> applications;
    if (!options.applications.empty()) {
        applications.emplace();
        for (const auto& folder : options.applications)
            applications->push_back(StandardRoots::applicationRoot(folder.path(), places));
    }
    std::optional<std::vector<BackgroundRoot>> background;
    if (!options.agents.empty() || !options.daemons.empty()) {
        background.emplace();
        for (const auto& folder : options.agents)
            background->push_back(StandardRoots::backgroundRoot(folder.path(), agent, places));
        for (const auto& folder : options.daemons)
            background->push_back(StandardRoots::backgroundRoot(folder.path(), daemon, places));
    }
    return ObservationOptions(std::move(applications), std::move(background),
                              canonical(options.storage), places.machine);
}

/// Empty for an option that was not given.
std::filesystem::path pathOf(const std::optional<FilePath>& file) {
    return file ? file->path() : std::filesystem::path();
}

Snapshot observation(const ObserveOptions& options, const std::stop_token& stop) {
    ComponentStorageScanner* running = nullptr;
    ProgressLine progress([&] { return running ? running->entriesWalked() : 0; });
    ComponentStorageScanner scanner(pathOf(options.measurements), entriesPerSlice, progress);
    running = &scanner;

    const auto observed = observationOptions(options);
    Snapshot snapshot = SystemObserver::captureProgressively(
        observed, &scanner,
        [&](const std::string& phase) {
            // `SystemObserver` reports this phase, but the observation is saved below.
            if (phase != SystemObserver::savingPhase)
                progress.begin(phase);
        },
        progress, stop);
    snapshot.operatingSystem = SystemFacts::readOperatingSystem(observed.machine);
    if (options.homebrew || options.diagnostics || !options.config.empty()) {
        progress.begin("Scanning Additional History…");
        Paths files;
        // Not made canonical, so that a link is refused when the file is read.
        for (const auto& file : options.config)
            files.push_back(file.path().lexically_normal());
        snapshot.additionalReports = AdditionalObservations::collect(
            options.homebrew, options.diagnostics, files,
            AdditionalPlaces::standard(SystemFacts::homeDirectory()), progress, stop);
    }
    if (options.output)
        progress.begin(SystemObserver::savingPhase);
    return snapshot;
}

int observe(const ObserveOptions& options) {
    if (options.measurements)
        ownFiles::refuse(options.measurements->path());
    const auto file =
        options.output ? std::optional(writableFile(options.output->path())) : std::nullopt;
    Snapshot snapshot;
    {
        const Interruption interruption(Interruption::AfterStop::continues);
        snapshot = observation(options, interruption.token());
    }
    if (file)
        writeDocument(*file, snapshot);
    if (options.json) {
        json::write(snapshot, console::print);
        console::print("\n");
    } else if (!file) {
        console::print(observationSummary(snapshot));
    }
    return 0;
}

} // namespace

Command commands::observe() {
    return makeCommand<ObserveOptions, &tidemark::observe>({
        .name = "observe",
        .group = CommandGroup::observations,
        .summary = "Take one observation of this machine, or of one mounted elsewhere",
        .details =
            "With --root, folders are given as paths on that machine, and the home folder is\n"
            "the one with the same path there as the user's here. Nothing is measured, and no\n"
            "additional source is read. Two such observations can be compared with each other.\n"
            "--applications, --agents, --daemons, --storage and --config can be repeated.\n"
            "Control-C ends the observation early; a second one ends the program.",
    });
}

} // namespace tidemark
