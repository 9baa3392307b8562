#pragma once

#include "core/history/InstallationHistory.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tidemark {

/// What the import view shows of a preview: values in, values out.
struct ImportView {
    struct Row {
        std::string name;
        /// "Version 2", or "Version not recorded".
        std::string version;
        /// It is labelled `importText::alreadyImported`.
        bool isImported = false;

        bool operator==(const Row&) const = default;
    };

    /// The candidates, latest first.
    std::vector<Row> rows;
    /// Those of them that confirming imports.
    std::vector<InstallationRecord> newRecords;
    /// Why there is nothing to choose or to import, if so.
    std::optional<std::string> notice;
    /// Entries of the report that can't be shown, if any.
    std::optional<std::string> skippedNotice;
    std::string confirmLabel;
    bool canConfirm = false;

    static ImportView of(const InstallationPreview& preview, bool includeRoutine,
                         const std::set<std::string>& importedIDs, bool busy);

    /// The records that are offered.
    static std::vector<InstallationRecord> candidates(const InstallationPreview& preview,
                                                      bool includeRoutine);
};

} // namespace tidemark
