#pragma once

#include <QString>
#include <optional>
#include <span>
#include <string_view>

namespace tidemark {

/// The sentences that the core puts together from a fixed part and one or two that are not, which
/// stand for "%1" and "%2", such as the name of a folder or a number. Sources of translations in
/// the context "core".
std::span<const char* const> corePatterns();
/// The same, of sizes over time and of times without captures.
std::span<const char* const> growthPatterns();
/// Lengths of time: "%1 days".
std::span<const char* const> lengthPatterns();

/// Parts of texts that have several, such as "%1 remaining". They are too short to be looked for in
/// a text that may be a name.
std::span<const char* const> partPatterns();

/// The text in the language of the user, when it is one of these sentences. What stands for "%1"
/// and "%2" stays as it is, unless it is a length of time.
std::optional<QString> translatedByPattern(std::string_view text);
/// The same by `partPatterns`.
std::optional<QString> translatedPart(std::string_view part);

} // namespace tidemark
