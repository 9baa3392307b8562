#pragma once

#include "core/base/Calendar.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// One line of the inspector: what it is, and what was recorded.
struct InspectionRow {
    std::string label;
    std::string value;
    /// True when the value is a name or a recorded text, and not words of this program.
    bool isNamed = false;

    bool operator==(const InspectionRow&) const = default;
};

/// One thing that was different at the two ends of an interval.
struct InspectionChange {
    std::string subject;
    std::string before;
    std::string after;
    /// The difference in bytes; absent for a change of something else than a size.
    std::optional<std::int64_t> growth{};
    /// True when the subject is the name of a folder, a file, a program or a setting.
    bool isNamed = false;

    bool operator==(const InspectionChange&) const = default;
};

/// Shown in this order: the heading, the rows, the changes as a table, the sentences.
struct InspectionSection {
    /// May be empty.
    std::string heading{};
    std::vector<InspectionRow> rows{};
    std::vector<InspectionChange> changes{};
    std::vector<std::string> sentences{};

    bool isEmpty() const { return rows.empty() && changes.empty() && sentences.empty(); }
    bool operator==(const InspectionSection&) const = default;
};

} // namespace tidemark
