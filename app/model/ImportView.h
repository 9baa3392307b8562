#pragma once

#include "core/history/InstallationHistory.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tidemark {

/// The contents of the import view for a preview.
struct ImportView {
    struct Row {
        std::string name;
        /// "Version 2", or "Version not recorded".
        std::string version;
        /// True for a row with the label `importText::alreadyImported`.
        bool isImported = false;

        bool operator==(const Row&) const = default;
    };

    /// The candidates, latest first.
    std::vector<Row> rows;
    /// The records that are imported on confirmation.
    std::vector<InstallationRecord> newRecords;
    /// Why there is nothing to import, if so.
    std::optional<std::string> notice;
    /// The text about entries of the report that could not be read, if any.
    std::optional<std::string> skippedNotice;
    std::string confirmLabel;
    bool canConfirm = false;

    static ImportView of(const InstallationPreview& preview, bool includeRoutine,
                         const std::set<std::string>& importedIDs, bool busy);

    /// The records of the preview, also those that were imported before; those of routine
    /// maintenance only with `includeRoutine`.
    static std::vector<InstallationRecord> candidates(const InstallationPreview& preview,
                                                      bool includeRoutine);
};

} // namespace tidemark
