#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The fixed texts around the list of the main window.
namespace tidemark::workspaceText {

inline constexpr std::string_view footer =
    "History is stored locally. Changes between observations are not exact activity timestamps.";
inline constexpr std::string_view openCoverage = "Observation coverage…";
inline constexpr std::string_view snapshotView = "Snapshot view";
inline constexpr std::string_view comparing = "Comparing snapshots…";
inline constexpr std::string_view incompleteSnapshot =
    "Some earlier events in this snapshot’s timeline are no longer retained. Compare States can "
    "still compare the saved metadata, but cannot reconstruct deleted events.";
inline constexpr std::string_view searchPrompt = "Search";
inline constexpr std::string_view clearSearch = "Clear search";

/// The line above the list.
inline std::string header(std::size_t events, bool isStateComparison) {
    if (isStateComparison)
        return "Net differences between observations";
    return std::to_string(events) + (events == 1 ? " event" : " events") + " · observed history";
}

} // namespace tidemark::workspaceText
