#include "cli/ObserveCommand.h"

#include "cli/Console.h"
#include "cli/Interruption.h"
#include "cli/ObservationSummary.h"
#include "cli/OutputFile.h"
#include "cli/ProgressLine.h"
#include "core/base/Documents.h"
#include "core/capture/AdditionalObservations.h"
#include "core/capture/SystemObserver.h"
#include "core/storage/ComponentStorageScanner.h"
#include "core/system/SystemFacts.h"

#include <algorithm>

namespace tidemark {

namespace {

using Paths = std::vector<std::filesystem::path>;

constexpr std::int64_t entriesPerSlice = 1'000'000;

/// Paths as the user gave them, made whole, since the working directory means nothing in a record;
/// what is given twice is observed once.
Paths absolute(const Paths& paths) {
    Paths result;
    for (const auto& given : paths)
        if (auto path = canonicalPath(given); std::ranges::find(result, path) == result.end())
            result.push_back(std::move(path));
    return result;
}

ObservationOptions optionsOf(const ObserveCommand& command) {
    std::optional<Paths> applications;
    if (!command.applications.empty())
        applications = absolute(command.applications);
    std::optional<std::vector<BackgroundRoot>> background;
    if (!command.agents.empty() || !command.daemons.empty()) {
        background.emplace();
        for (const auto& path : absolute(command.agents))
            background->push_back({path, BackgroundItem::Kind::agent});
        for (const auto& path : absolute(command.daemons))
            background->push_back({path, BackgroundItem::Kind::daemon});
    }
    return ObservationOptions(std::move(applications), std::move(background),
                              absolute(command.storage));
}

Snapshot observe(const ObserveCommand& command, const std::stop_token& stop) {
    ComponentStorageScanner* running = nullptr;
    ProgressLine progress([&] { return running ? running->entriesWalked() : 0; });
    ComponentStorageScanner scanner(command.measurements, entriesPerSlice, progress);
    running = &scanner;

    Snapshot snapshot = SystemObserver::captureProgressively(
        optionsOf(command), &scanner,
        [&](const std::string& phase) {
            // Nothing has been saved yet that this phase could be told of.
            if (phase != "Saving Observation…")
                progress.begin(phase);
        },
        progress, stop);
    snapshot.operatingSystem = SystemFacts::collectOperatingSystem();
    if (command.homebrew || command.diagnostics || !command.configurations.empty()) {
        progress.begin("Scanning Additional History…");
        Paths files;
        // Not canonical: a link is refused there, not followed here.
        for (const auto& file : command.configurations)
            files.push_back(std::filesystem::absolute(file).lexically_normal());
        snapshot.additionalReports =
            AdditionalObservations::collect(command.homebrew, command.diagnostics, files,
                                            SystemFacts::homeDirectory(), progress, stop);
    }
    if (!command.output.empty())
        progress.begin("Saving Observation…");
    return snapshot;
}

} // namespace

void ObserveCommand::run() const {
    const auto file = output.empty() ? output : writableFile(output);
    Snapshot snapshot;
    {
        const Interruption interruption;
        snapshot = observe(*this, interruption.token());
    }
    if (!output.empty())
        writeDocument(file, snapshot);
    if (json) {
        json::write(snapshot, console::print);
        console::print("\n");
    } else if (output.empty()) {
        console::print(observationSummary(snapshot));
    }
}

} // namespace tidemark
