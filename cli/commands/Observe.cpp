#include "cli/Console.h"
#include "cli/Interruption.h"
#include "cli/OutputFile.h"
#include "cli/ProgressLine.h"
#include "cli/TerminalCommands.h"
#include "core/base/Documents.h"
#include "core/base/JsonEncoder.h"
#include "core/capture/AdditionalObservations.h"
#include "core/capture/SystemObserver.h"
#include "core/storage/ComponentStorageScanner.h"
#include "core/system/SystemFacts.h"
#include "recorder/ObservationSummary.h"
#include "recorder/OwnFiles.h"
#include "recorder/TypedInvocation.h"

#include <algorithm>

namespace tidemark {

namespace {

using Paths = std::vector<std::filesystem::path>;

struct Options {
    /// If not given, the standard folders of the system and of the user's home.
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
        constexpr OptionForm file{.valueName = "FILE"};
        return std::tuple{
            Option{"applications", &Options::applications, "Folder to search for applications",
                   folder},
            Option{"agents", &Options::agents, "Folder of agent definitions", folder},
            Option{"daemons", &Options::daemons, "Folder of daemon definitions", folder},
            Option{"storage", &Options::storage, "Folder to measure", folder},
            Option{"homebrew", &Options::homebrew, "Add the installed Homebrew formulas"},
            Option{"diagnostics", &Options::diagnostics, "Add the diagnostic reports"},
            Option{"config", &Options::config, "Configuration file to fingerprint", file},
            Option{"measurements", &Options::measurements,
                   "File that keeps finished measurements for the next run", file},
            Option{"output",
                   &Options::output,
                   "File to write the observation to, as stored JSON",
                   {.letter = 'o', .valueName = "FILE"}},
            Option{"json", &Options::json, "Print the observation as stored JSON"}};
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

ObservationOptions observationOptions(const Options& options) {
    std::optional<Paths> applications;
    if (!options.applications.empty())
        applications = canonical(options.applications);
    std::optional<std::vector<BackgroundRoot>> background;
    if (!options.agents.empty() || !options.daemons.empty()) {
        background.emplace();
        for (const auto& path : canonical(options.agents))
            background->push_back({path, BackgroundItem::Kind::agent});
        for (const auto& path : canonical(options.daemons))
            background->push_back({path, BackgroundItem::Kind::daemon});
    }
    return ObservationOptions(std::move(applications), std::move(background),
                              canonical(options.storage));
}

/// Empty for an option that was not given.
std::filesystem::path pathOf(const std::optional<FilePath>& file) {
    return file ? file->path() : std::filesystem::path();
}

Snapshot observation(const Options& options, const std::stop_token& stop) {
    ComponentStorageScanner* running = nullptr;
    ProgressLine progress([&] { return running ? running->entriesWalked() : 0; });
    ComponentStorageScanner scanner(pathOf(options.measurements), entriesPerSlice, progress);
    running = &scanner;

    Snapshot snapshot = SystemObserver::captureProgressively(
        observationOptions(options), &scanner,
        [&](const std::string& phase) {
            // `SystemObserver` reports this phase, but the observation is saved below.
            if (phase != "Saving Observation…")
                progress.begin(phase);
        },
        progress, stop);
    snapshot.operatingSystem = SystemFacts::collectOperatingSystem();
    if (options.homebrew || options.diagnostics || !options.config.empty()) {
        progress.begin("Scanning Additional History…");
        Paths files;
        // Not made canonical, so that a link is refused when the file is read.
        for (const auto& file : options.config)
            files.push_back(file.path().lexically_normal());
        snapshot.additionalReports =
            AdditionalObservations::collect(options.homebrew, options.diagnostics, files,
                                            SystemFacts::homeDirectory(), progress, stop);
    }
    if (options.output)
        progress.begin("Saving Observation…");
    return snapshot;
}

int observe(const Options& options) {
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
    return makeCommand<Options, &tidemark::observe>({
        .name = "observe",
        .group = CommandGroup::observations,
        .summary = "Take one observation of this machine",
        .details = "Options that take a folder or a --config file can be given several times.\n"
                   "Control-C ends the observation early; a second one ends the program.",
    });
}

} // namespace tidemark
