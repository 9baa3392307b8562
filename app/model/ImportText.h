#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tidemark {

/// The texts of the import view and of the command line about an import.
namespace importText {

inline constexpr std::string_view title = "A little history to start with";
inline constexpr std::string_view explanation =
    "Import installation records from the last 7 days. They’ll appear on their recorded dates, "
    "labeled “Imported from macOS.”";
inline constexpr std::string_view limits =
    "Events from before Tidemark was installed may be incomplete. This import cannot reconstruct "
    "past storage changes, removals, or previous app versions.";
inline constexpr std::string_view reading = "Reading macOS installation history…";
inline constexpr std::string_view includeRoutine = "Include macOS maintenance records";
inline constexpr std::string_view routineExplanation =
    "Includes XProtect, MRT, Gatekeeper configuration, and Core Services configuration updates.";
inline constexpr std::string_view local = "Local to this Mac";
inline constexpr std::string_view tryAgain = "Try Again";
inline constexpr std::string_view cancel = "Cancel";
inline constexpr std::string_view onlyRoutine =
    "Only macOS maintenance records were found. Include them above to preview those records.";
inline constexpr std::string_view noRecords = "No installation records found in the last 7 days.";
inline constexpr std::string_view allKnown = "These records are already in your timeline.";
inline constexpr std::string_view alreadyImported = "Already imported";
inline constexpr std::string_view initialFailure =
    "Recent history couldn’t be imported. New changes will still be recorded. You can retry using "
    "Import recent history…";

/// Shown after the first import into a journal.
std::string initialSuccess(std::size_t newRecords);
/// "{n} malformed records in the macOS report were skipped."
std::string skipped(std::size_t records);
/// The confirm button: "Import 1 Record".
std::string confirm(std::size_t newRecords);

} // namespace importText

} // namespace tidemark
