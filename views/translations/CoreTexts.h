#pragma once

#include <span>

namespace tidemark {

/// The fixed texts of the core that windows show, in the words of this system, so that they can be
/// translated: the core has no translations itself, and `shownText` looks its texts up.
std::span<const char* const> coreTexts();
/// The same, of what the inspector and the list of events show.
std::span<const char* const> inspectorTexts();
/// The same, of what is recorded, and what a capture could not do.
std::span<const char* const> recordTexts();
/// The same, of sizes over time and of times without captures.
std::span<const char* const> growthTexts();
/// The same, of what a screen reader says.
std::span<const char* const> spokenTexts();

} // namespace tidemark
