#include "core/base/Characters.h"

#include <memory>

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/utext.h>

namespace tidemark {

std::string_view firstCharacters(std::string_view text, std::size_t count) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    const std::unique_ptr<UText, decltype(&utext_close)> source(
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status),
        &utext_close);
    if (U_FAILURE(status))
        return text;
    characters->setText(source.get(), status);
    std::int32_t end = 0;
    for (std::size_t i = 0; i < count && end != icu::BreakIterator::DONE; ++i)
        end = characters->next();
    return end == icu::BreakIterator::DONE ? text : text.substr(0, static_cast<std::size_t>(end));
}

} // namespace tidemark
