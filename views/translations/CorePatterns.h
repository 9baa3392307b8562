#pragma once

#include <QString>
#include <optional>
#include <span>
#include <string_view>

namespace tidemark {

/// The sentences that the core puts together from a fixed part and one or two that are not, which
/// stand for "%1" and "%2" and stay as they are, such as the name of a folder. Sources of
/// translations in the context "core".
std::span<const char* const> corePatterns();
/// The same, of what is recorded, and what a capture could not read. "%2" stands for a sentence or
/// a quantity, which is translated.
std::span<const char* const> recordPatterns();
/// What could not be done, and why: the other part is one of `causePatterns`, or stays as it is.
std::span<const char* const> failurePatterns();
std::span<const char* const> causePatterns();
/// The same, whose other parts are sizes, lengths of time, dates and numbers.
std::span<const char* const> growthPatterns();
/// Lengths of time and counts: "%1 days", "%1 of %2".
std::span<const char* const> lengthPatterns();
/// Sizes: "%1.%2 GB", in which a language has its own sign between the two numbers.
std::span<const char* const> sizePatterns();

/// Parts of texts that have several, such as "%1 remaining". They are too short to be looked for in
/// a text that may be a name.
std::span<const char* const> partPatterns();

/// The text in the language of the user, when it is one of the sentences of `corePatterns`,
/// `recordPatterns`, `failurePatterns` or `growthPatterns`.
std::optional<QString> translatedByPattern(std::string_view text);
/// The same by `partPatterns`.
std::optional<QString> translatedPart(std::string_view part);
/// A size or a length of time, such as "+1.2 GB" or "3 days", in the language of the user; absent
/// for any other text.
std::optional<QString> translatedQuantity(std::string_view text);

} // namespace tidemark
