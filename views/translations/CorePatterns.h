#pragma once

#include <QString>
#include <optional>
#include <span>
#include <string_view>

namespace tidemark {

/// The sentences that the core puts together from a fixed part and one that is not, which stands
/// for "%1", such as the name of a folder or a number. Sources of translations in the context
/// "core".
std::span<const char* const> corePatterns();

/// The text in the language of the user, when it is one of these sentences. What stands for "%1"
/// stays as it is.
std::optional<QString> translatedByPattern(std::string_view text);

} // namespace tidemark
