#include "core/presentation/StorageChangeDetail.h"

#include "core/base/Text.h"
#include "core/presentation/InspectionWords.h"
#include "core/timeline/StorageBreakdown.h"

namespace tidemark {

namespace {

/// How many parts are named at most; the rest of the change is one line.
constexpr std::int64_t namedParts = 12;

constexpr const char* noBreakdown =
    "A comparable breakdown wasn’t recorded for both observations. The total size change is still "
    "available.";
constexpr const char* noParts = "No individual folder changes in the available breakdown.";
constexpr const char* remainder = "The remaining net change outside the breakdown shown above.";
constexpr const char* logicalSizes =
    "Logical file sizes. APFS clones, compression, and overlapping locations mean this is not "
    "physical disk usage.";

InspectionChange lineOf(const StorageContribution& part) {
    return {part.name, byteString(part.before), byteString(part.after), part.delta(), true};
}

void addParts(InspectionSection& section, const StorageBreakdown& breakdown) {
    for (const auto& part : breakdown.contributions)
        section.changes.push_back(lineOf(part));
}

/// The files that lie directly in the folder, where both sides know their names.
InspectionSection fileChanges(const FolderSize& before, const FolderSize& after) {
    InspectionSection section{.heading = "File Changes"};
    if (!before.directFileSizes || !after.directFileSizes)
        return section;
    const auto filesOf = [](const FolderSize& folder) {
        FolderSize files;
        files.breakdown = folder.directFileSizes.value();
        return files;
    };
    addParts(section, StorageBreakdown(filesOf(before), filesOf(after), namedParts));
    return section;
}

InspectionSection otherChanges(const StorageBreakdown& breakdown) {
    InspectionSection section{.heading = "Other Changes"};
    if (!breakdown.isAvailable || breakdown.otherDelta == 0)
        return section;
    section.rows.push_back({"Net change", signedBytes(breakdown.otherDelta)});
    section.sentences.emplace_back(remainder);
    return section;
}

InspectionSection whereChanged(const StorageBreakdown& breakdown) {
    InspectionSection section{.heading = "Where the Size Changed"};
    addParts(section, breakdown);
    if (!breakdown.isAvailable)
        section.sentences.emplace_back(noBreakdown);
    else if (breakdown.contributions.empty())
        section.sentences.emplace_back(noParts);
    return section;
}

InspectionSection measurement(const FolderSize& before, const FolderSize& after,
                              const Calendar& calendar) {
    const auto recorded = [&](const FolderSize& folder) {
        return folder.measuredAt ? inspectionWords::moment(*folder.measuredAt, calendar)
                                 : "Date not recorded";
    };
    InspectionSection section;
    section.changes.push_back({"Size recorded", recorded(before), recorded(after)});
    if (after.allocatedBytes)
        section.sentences.push_back("Allocated File Storage: " + byteString(*after.allocatedBytes));
    section.sentences.emplace_back(logicalSizes);
    return section;
}

} // namespace

std::vector<InspectionSection>
storageChangeDetail(const FolderSize& before, const FolderSize& after, const Calendar& calendar) {
    const StorageBreakdown breakdown(before, after, namedParts);
    std::vector<InspectionSection> sections{whereChanged(breakdown)};
    for (auto&& section : {fileChanges(before, after), otherChanges(breakdown)})
        if (!section.isEmpty())
            sections.push_back(section);
    sections.push_back(measurement(before, after, calendar));
    return sections;
}

} // namespace tidemark
