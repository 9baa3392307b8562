#include "core/presentation/EventInspection.h"

#include "core/base/Characters.h"
#include "core/base/Text.h"
#include "core/presentation/ActivityContextDetails.h"
#include "core/presentation/ChangeInspection.h"
#include "core/presentation/EventParts.h"
#include "core/presentation/EventRow.h"
#include "core/presentation/InspectionWords.h"
#include "core/presentation/MenuContent.h"
#include "core/presentation/MenuText.h"
#include "core/presentation/SystemWords.h"

#include <algorithm>

namespace tidemark {

namespace {

using inspectionWords::moment;

constexpr const char* intervalSentence =
    "Changes happened between observations; this is not an exact installation time.";
constexpr const char* comparisonSentence =
    "This is a difference between two saved observations, not an individual event or its "
    "installation time.";
constexpr const char* gapSentence =
    "No system snapshots were saved during this interval. Tidemark may have been closed, your Mac "
    "asleep, or a capture delayed or unsuccessful. This does not establish a shutdown or loss of "
    "folder access. Sleep/wake notifications may still have been recorded.";
constexpr const char* installationSentence =
    "This record does not establish whether the installation was new or an update, its previous "
    "version, or whether the software is still present. macOS history does not cover every "
    "installation method.";

/// The most characters of a clip that are shown.
constexpr std::size_t mostClipText = 2'000;

InspectionSection gapSection(const ObservationGap& gap, const Calendar& calendar) {
    return {.heading = "Recording coverage",
            .rows = {{"Last capture before gap", moment(gap.start, calendar)},
                     {"Captures resumed", moment(gap.end, calendar)}},
            .sentences = {gapSentence}};
}

InspectionSection installationSection(const InstallationRecord& record, const Calendar& calendar) {
    return {.rows = {{"Source", "Imported from macOS installation history"},
                     {"Recorded installation date", moment(record.recordedAt, calendar)},
                     {"Imported into Tidemark", moment(record.importedAt, calendar)},
                     {"Installer source", record.sourceDescription()}},
            .sentences = {installationSentence}};
}

/// The time of the event; an interval for changes between two observations.
InspectionSection timeSection(const Event& event, bool isStateComparison,
                              const Calendar& calendar) {
    InspectionSection section;
    if (isStateComparison)
        section.heading = "STATE DIFFERENCE";
    if (event.intervalStart == event.timestamp) {
        section.rows.push_back(
            {isStateComparison ? "Compared at" : "Recorded at", moment(event.timestamp, calendar)});
    } else {
        section.rows.push_back(
            {isStateComparison ? "Compared snapshots" : "Observation interval",
             inspectionWords::interval(event.intervalStart, event.timestamp, calendar)});
        if (!isStateComparison)
            section.sentences.emplace_back(intervalSentence);
    }
    if (isStateComparison)
        section.sentences.emplace_back(comparisonSentence);
    return section;
}

InspectionSection activitySection(const SystemActivity& activity) {
    return {.rows = {{"Source", std::string(activity.source())}},
            .sentences = {std::string(activity.explanation()),
                          std::string(activity.coverageExplanation())}};
}

InspectionSection memorySection(const MemoryRecord& record, const Calendar& calendar) {
    InspectionSection section;
    const auto row = [&](const char* label, const std::optional<std::string>& value) {
        if (value && !value->empty())
            section.rows.push_back({label, *value});
    };
    const auto namedRow = [&](const char* label, const std::optional<std::string>& value) {
        if (value && !value->empty())
            section.rows.push_back({label, *value, true});
    };
    row("Activity", std::string(record.activity()));
    namedRow("Path", record.path);
    namedRow("Application", record.appName);
    row("Content", record.contentType);
    // The title is the beginning of the text, on one line.
    if (record.text && record.text != record.title)
        namedRow("Text", std::string(firstCharacters(*record.text, mostClipText)));
    namedRow("Downloaded from", record.sourceURL);
    if (record.bytes)
        row("Size", byteString(*record.bytes));
    if (record.lastOpened)
        row("Last used", moment(*record.lastOpened, calendar));
    if (record.observedAt != record.timestamp)
        row("First observed", moment(record.observedAt, calendar));
    if (record.pinned)
        row("Pinned", "Yes");
    section.sentences.emplace_back(record.explanation());
    return section;
}

std::vector<InspectionSection> sectionsOf(const Event& event, const Snapshot* latest,
                                          bool isStateComparison, const Calendar& calendar) {
    // The sections of these two kinds contain the time themselves.
    if (event.observationGap)
        return {gapSection(*event.observationGap, calendar)};
    if (event.installationRecord)
        return {installationSection(*event.installationRecord, calendar)};
    std::vector<InspectionSection> sections{timeSection(event, isStateComparison, calendar)};
    if (event.systemActivity) {
        sections.push_back(activityContextDetails(*event.systemActivity, calendar));
        sections.push_back(activitySection(*event.systemActivity));
    }
    if (event.memory)
        sections.push_back(memorySection(*event.memory, calendar));
    std::ranges::move(ChangeInspection::sections(event, latest, calendar),
                      std::back_inserter(sections));
    return sections;
}

std::vector<InspectionAction> actionsOf(const Event& event) {
    std::vector<InspectionAction> actions;
    // The label is empty for something that this system does not have.
    const auto offer = [&](InspectionCommand command, std::string_view label) {
        if (auto words = systemWords::shown(label); !words.empty())
            actions.push_back({command, std::move(words)});
    };
    if (event.identifier)
        offer(InspectionCommand::copyIdentifier, "Copy identifier");
    if (event.memory && event.memory->kind == MemoryRecord::Kind::clipboard) {
        offer(InspectionCommand::copyClip, menuText::copyClip);
        offer(InspectionCommand::togglePin,
              event.memory->pinned ? menuText::unpinClip : menuText::pinClip);
    }
    if (event.changes.empty())
        return actions;
    if (std::holds_alternative<change::FolderSizeChanged>(event.changes.front()))
        offer(InspectionCommand::inspectFolderSizes, "Inspect Folder Sizes");
    if (event.category == EventCategory::background)
        offer(InspectionCommand::backgroundSettings, "Login Items Settings…");
    return actions;
}

void putInWordsOfThisSystem(InspectionSection& section) {
    section.heading = systemWords::shown(section.heading);
    for (auto& row : section.rows) {
        row.label = systemWords::shown(row.label);
        if (!row.isNamed)
            row.value = systemWords::shown(row.value);
    }
    for (auto& change : section.changes) {
        if (!change.isNamed)
            change.subject = systemWords::shown(change.subject);
        for (auto* text : {&change.before, &change.after})
            *text = systemWords::shown(*text);
    }
    for (auto& sentence : section.sentences)
        sentence = systemWords::shown(sentence);
    std::erase_if(section.rows, [](const auto& row) { return row.label.empty(); });
    std::erase(section.sentences, "");
}

} // namespace

EventInspection EventInspection::of(const Event& event, const Snapshot* latest,
                                    bool isStateComparison, const Calendar& calendar) {
    EventInspection made;
    made.title = shownTitle(event);
    made.subtitle = eventParts::joined(eventParts::subtitle(event));
    made.symbol = event.symbol;
    made.sections = sectionsOf(event, latest, isStateComparison, calendar);
    if (event.identifier)
        made.sections.push_back({.rows = {{"Identifier", *event.identifier, true}}});
    std::ranges::for_each(made.sections, putInWordsOfThisSystem);
    std::erase_if(made.sections, [](const auto& section) { return section.isEmpty(); });
    made.actions = actionsOf(event);
    return made;
}

} // namespace tidemark
