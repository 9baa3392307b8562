#include "core/base/PhraseSearch.h"

#include "core/base/Utf8.h"

#include <array>
#include <cstring>

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/stringoptions.h>

namespace tidemark {

namespace {

bool isTurkic() {
    const std::string_view language = icu::Locale::getDefault().getLanguage();
    return language == "tr" || language == "az";
}

/// Case-folded and composed, by the whole of Unicode.
std::string foldedByUnicode(std::string_view text, bool turkic) {
    const auto piece = [](std::string_view bytes) {
        return icu::StringPiece(bytes.data(), static_cast<std::int32_t>(bytes.size()));
    };
    UErrorCode status = U_ZERO_ERROR;
    std::string lower;
    icu::StringByteSink<std::string> lowerSink(&lower);
    icu::CaseMap::utf8Fold(turkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT,
                           piece(text), lowerSink, nullptr, status);
    std::string composed;
    icu::StringByteSink<std::string> composedSink(&composed);
    if (const icu::Normalizer2* normalizer = icu::Normalizer2::getNFCInstance(status))
        normalizer->normalizeUTF8(0, piece(lower), composedSink, nullptr, status);
    return U_SUCCESS(status) ? composed : std::string(text);
}

constexpr auto asciiLower = [] {
    std::array<char, 128> lower{};
    for (std::size_t c = 0; c < lower.size(); ++c)
        lower[c] = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return lower;
}();

/// The dots, dashes and arrows of the program's own texts: they have no case, and nothing
/// composes with them.
bool isPlainSymbol(std::int32_t character) {
    return character == 0xB7 || (character >= 0x2010 && character <= 0x2027)
           || (character >= 0x2190 && character <= 0x2193) || character == 0x2212;
}

/// Folds what needs no tables. False when it meets anything else: then `out` is of no use.
bool foldPlainText(std::string_view text, std::string& out) {
    out.resize(text.size());
    for (std::size_t place = 0; place < text.size();) {
        const auto byte = static_cast<unsigned char>(text[place]);
        if (byte < 0x80) {
            out[place++] = asciiLower[byte];
            continue;
        }
        const std::size_t start = place;
        if (!isPlainSymbol(utf8::next(text, place)))
            return false;
        std::memcpy(out.data() + start, text.data() + start, place - start);
    }
    return true;
}

} // namespace

PhraseSearch::PhraseSearch(std::string_view sought) : turkic(isTurkic()) {
    phrase = foldedByUnicode(sought, turkic);
}

bool PhraseSearch::isIn(std::string_view text) {
    if (turkic || !foldPlainText(text, folded))
        folded = foldedByUnicode(text, turkic);
    return folded.find(phrase) != std::string::npos;
}

} // namespace tidemark
