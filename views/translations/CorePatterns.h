#pragma once

#include <QString>
#include <optional>
#include <span>
#include <string_view>

namespace tidemark {

// Texts that the core puts together, as patterns. "%1" and "%2" stand for what differs from text to
// text. All of them are sources of translations in the context "core".

/// "%1" and "%2" stand for names, such as that of a folder, and for numbers; they stay as they are.
std::span<const char* const> corePatterns();
/// Titles of events: the name that "%1" stands for stays as it is.
std::span<const char* const> titlePatterns();
/// Sentences about what is recorded and about what a capture could not read. "%1" stands for a name
/// or a number, which stays as it is, and "%2" for a sentence or a quantity, which is translated.
std::span<const char* const> recordPatterns();
/// Sentences about what could not be done. "%1" stands for the cause: a text of one of
/// `causePatterns`, or one that stays as it is.
std::span<const char* const> failurePatterns();
/// Why something could not be done. "%1" and "%2" stay as they are.
std::span<const char* const> causePatterns();
/// Sentences about growth: "%1" and "%2" stand for sizes and lengths of time, which are translated,
/// and for dates and numbers.
std::span<const char* const> growthPatterns();
/// Lengths of time and counts: "%1 days", "%1 of %2".
std::span<const char* const> lengthPatterns();
/// Sizes: "%1.%2 GB", in which a language has its own sign between the two numbers.
std::span<const char* const> sizePatterns();
/// Parts of texts that have several, such as "%1 remaining": words around a quantity, a version, a
/// date or a name. They are too short to be looked for in a text that may be a name.
std::span<const char* const> partPatterns();

/// The text in the language of the user, when it is of one of the `corePatterns`, `recordPatterns`,
/// `titlePatterns`, `failurePatterns`, `causePatterns` or `growthPatterns`.
std::optional<QString> translatedByPattern(std::string_view text);
/// The title of an event in the language of the user, when it is of one of the `titlePatterns`.
std::optional<QString> translatedTitle(std::string_view text);
/// A part of a text in the language of the user, when it is of one of the `partPatterns`.
std::optional<QString> translatedPart(std::string_view part);
/// A size or a length of time, such as "+1.2 GB" or "3 days", in the language of the user; absent
/// for any other text.
std::optional<QString> translatedQuantity(std::string_view text);

} // namespace tidemark
