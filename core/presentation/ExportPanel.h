#pragma once

#include "core/history/HistoryExport.h"

#include <string>
#include <string_view>

/// The texts of the panel that saves the history as a report. The suggested file name is
/// `HistoryExport::fileName`.
namespace tidemark::exportPanel {

inline constexpr std::string_view title = "Export History";
inline constexpr std::string_view formatLabel = "Format";
inline constexpr HistoryExport::Format firstFormat = HistoryExport::Format::csv;
/// A switch that is off at first.
inline constexpr std::string_view includePrivate = "Include paths, device and Wi-Fi names";
inline constexpr std::string_view privacyNote =
    "App names and other event metadata remain included. Review the file before sharing. History "
    "may be incomplete. This is a report, not a backup.";

inline std::string summary(std::size_t events) {
    return std::to_string(events) + (events == 1 ? " event" : " events")
           + " from your current view. Your filters and comparison mode are preserved.";
}

/// Shown when saving failed; the panel stays open.
inline std::string failure(std::string_view description) {
    return "Couldn’t save the export. " + std::string(description);
}

} // namespace tidemark::exportPanel
