#pragma once

#include "core/base/Calendar.h"
#include "core/growth/GrowthReport.h"

#include <string>
#include <vector>

/// The texts of a list of what grew.
namespace tidemark::growthText {

/// "12.4 GB less free; 9.1 GB of it in folders you monitor."
std::string summary(const GrowthReport& report);
/// What the summary leaves out, as sentences: unknown folders, and why free space is unknown.
std::vector<std::string> remarks(const GrowthReport& report);
/// The period that the sizes of folders and free space really cover: "12 Mar 2026 – 19 Mar 2026".
/// Empty when there are none.
std::string period(const GrowthReport& report, const Calendar& calendar);

/// False when a size from which the change would be computed is not known.
bool isSizeKnown(const GrowthItem& item);

/// One item as a row of a table.
struct Row {
    std::string name;
    /// The sizes: "—" where the item did not exist, "Unknown" where the size is not known.
    std::string before;
    std::string after;
    /// The change with its sign, if it is known. For an application that appeared or was removed,
    /// "New" or "Gone" comes before it.
    std::string change;
    /// "42 %".
    std::string share;
    /// Path, times of both measurements and the largest parts, one line each.
    std::string help;
    /// All texts of the row except `help` in one sentence, for a screen reader.
    std::string accessibleText;

    bool operator==(const Row&) const = default;
};
Row row(const GrowthItem& item, const Calendar& calendar);

} // namespace tidemark::growthText
