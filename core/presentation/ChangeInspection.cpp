#include "core/presentation/ChangeInspection.h"

#include "core/base/Text.h"
#include "core/presentation/ApplicationSizeDetail.h"
#include "core/presentation/ChangeList.h"
#include "core/presentation/InspectionWords.h"
#include "core/presentation/LatestPresence.h"
#include "core/presentation/StorageChangeDetail.h"
#include "core/system/TrashFolder.h"
#include "core/timeline/DefinitionComparison.h"

#include <algorithm>

namespace tidemark::ChangeInspection {

namespace {

using inspectionWords::notReported;
using LatestPresence::State;

constexpr const char* updateSentence =
    "The version or build changed between observations. The exact installation time and cause are "
    "unknown; a restore or downgrade can also change the version.";
constexpr const char* definitionSentence =
    "A definition on disk does not confirm that this item is enabled or running.";
constexpr const char* trashSentence =
    "Trash was observed empty after containing items. Its previous size was not completely "
    "measured. Items may have been deleted, restored, or moved elsewhere; this does not confirm "
    "disk space was freed.";
constexpr const char* spaceSentence =
    "Volume-wide available space can change independently of tracked folders, including system "
    "activity and APFS snapshots.";
constexpr const char* fileSentence =
    "Content changed in an explicitly selected file. Tidemark stores a fingerprint, not the file "
    "contents or a text diff.";
constexpr const char* homebrewSentence =
    "Installed formula versions only. Casks are covered by Applications; custom Homebrew locations "
    "are not included.";
constexpr const char* diagnosticSentence =
    "A report file first appeared between captures. Report contents were not read. This does not "
    "establish when or why a crash occurred; copied reports can also appear here.";

std::string presenceOf(State state, bool isDefinition) {
    switch (state) {
    case State::present:
        return isDefinition ? "Definition present at last observation"
                            : "Present at last observation";
    case State::absent:
        return isDefinition ? "Definition absent at last observation"
                            : "Absent at last observation";
    case State::unknown:
        break;
    }
    return "Unknown · location was not fully observed.";
}

/// Fills the sections according to the kind of the event's first change.
class Subject {
public:
    Subject(const Event& described, const Snapshot* newest, const Calendar& dates)
        : event(described), latest(newest), calendar(dates) {}

    void operator()(const change::ApplicationInstalled& installed) {
        const Application& app = *installed.value;
        addVersion("Observed version", "Observed build", app);
        addPlace(app);
        made.push_back(applicationSizeDetail(event, app, latest, calendar));
    }

    void operator()(const change::ApplicationUpdated& updated) {
        addVersion("Observed version", "Observed build", *updated.after);
        addVersion("Previous version", "Previous build", *updated.before);
        addPlace(*updated.after);
        sentence(updateSentence);
        made.push_back(applicationSizeDetail(event, *updated.after, latest, calendar));
    }

    void operator()(const change::ApplicationRemoved& removed) {
        addVersion("Previous version", "Previous build", *removed.value);
        addPlace(*removed.value);
        made.push_back(removedApplicationSizeDetail(event, calendar));
    }

    void operator()(const change::BackgroundAdded& added) { add(*added.value); }
    void operator()(const change::BackgroundRemoved& removed) { add(*removed.value); }
    void operator()(const change::BackgroundChanged& changed) {
        const auto keys = DefinitionComparison::changedKeys(*changed.before, *changed.after);
        if (!keys.empty())
            namedRow("Changed settings", joined(keys, ", "));
        add(*changed.after);
    }

    void operator()(const change::FolderSizeChanged& changed) {
        const FolderSize& before = *changed.before;
        const FolderSize& after = *changed.after;
        addFolder(after.path);
        if (TrashFolder::is(after.path))
            addTrash(before.itemCount, after);
        std::ranges::move(storageChangeDetail(before, after, calendar), std::back_inserter(made));
    }

    void operator()(const change::TrashBecameEmpty& emptied) {
        addFolder(emptied.path);
        FolderSize empty;
        empty.path = emptied.path;
        empty.itemCount = 0;
        addTrash(emptied.previousItemCount, empty);
        sentence(trashSentence);
    }

    void operator()(const change::FreeDiskSpaceChanged&) {
        if (event.volumeContext) {
            namedRow("Volume", event.volumeContext->name);
            if (event.volumeContext->capacity)
                row("Capacity", byteString(*event.volumeContext->capacity));
        }
        sentence(spaceSentence);
    }

    void operator()(const change::OperatingSystemChanged& changed) {
        row("Observed version", changed.after.label());
        row("Previous macOS", changed.before.label());
    }

    void operator()(const change::MetadataChanged& changed) {
        if (const auto& item = changed.after ? changed.after : changed.before)
            add(*item);
    }

    std::vector<InspectionSection> sections() {
        std::erase_if(made, [](const auto& section) { return section.isEmpty(); });
        return std::move(made);
    }

private:
    void row(const char* label, std::string value) {
        made.front().rows.push_back({label, std::move(value)});
    }
    void namedRow(const char* label, std::string value) {
        made.front().rows.push_back({label, std::move(value), true});
    }
    void sentence(const char* text) { made.front().sentences.emplace_back(text); }

    void addVersion(const char* version, const char* build, const Application& app) {
        row(version, app.version.empty() ? notReported : app.version);
        // Most systems have no build number besides the version.
        if (!app.build.empty())
            row(build, app.build);
    }

    void addPlace(const Application& app) {
        namedRow("Path", app.path);
        if (latest)
            row("Latest observation",
                presenceOf(LatestPresence::ofApplication(app.path, *latest), false));
    }

    void addFolder(const std::string& path) {
        namedRow("Folder path", path);
        if (latest)
            row("Latest observation", presenceOf(LatestPresence::ofFolder(path, *latest), false));
    }

    void add(const BackgroundItem& item) {
        row("Kind", std::string(rawValue(item.kind)));
        if (item.association)
            row("Application relationship", *item.association);
        if (item.program)
            namedRow("Executable", *item.program);
        namedRow("Path", item.path);
        if (latest)
            row("Latest observation",
                presenceOf(LatestPresence::ofDefinition(item.path, *latest), true));
        sentence(definitionSentence);
    }

    void addTrash(std::optional<std::int64_t> previous, const FolderSize& after) {
        const auto count = [](std::optional<std::int64_t> items) {
            return items ? std::to_string(*items) : notReported;
        };
        row("Previously observed items", count(previous));
        std::optional<std::int64_t> now = after.itemCount;
        if (latest)
            for (const auto& folder : latest->folders)
                if (folder->path == after.path && folder->itemCount)
                    now = folder->itemCount;
        row("Latest observed items", count(now));
    }

    void add(const ObservedMetadata& item) {
        switch (item.kind) {
        case ObservedMetadata::Kind::homebrew:
            row("Source", "Homebrew Cellar metadata");
            namedRow("Path", item.path);
            sentence(homebrewSentence);
            break;
        case ObservedMetadata::Kind::configuration:
            namedRow("Selected file", item.path);
            row("File size", item.bytes ? byteString(*item.bytes) : notReported);
            sentence(fileSentence);
            break;
        case ObservedMetadata::Kind::diagnostic:
            row("Report type", item.reportType.value_or(notReported));
            if (item.inferredApplication)
                row("Possible application",
                    *item.inferredApplication + " · inferred from filename");
            namedRow("Path", item.path);
            sentence(diagnosticSentence);
            break;
        }
    }

    const Event& event;
    const Snapshot* latest;
    const Calendar& calendar;
    std::vector<InspectionSection> made{1};
};

} // namespace

std::vector<InspectionSection> sections(const Event& event, const Snapshot* latest,
                                        const Calendar& calendar) {
    if (event.changes.empty())
        return {};
    Subject subject(event, latest, calendar);
    std::visit(subject, event.changes.front());
    auto made = subject.sections();
    InspectionSection list{.heading = "CHANGE DETAILS", .changes = changeList(event.changes)};
    if (!list.isEmpty())
        made.push_back(std::move(list));
    return made;
}

} // namespace tidemark::ChangeInspection
