#include "core/base/PhraseSearch.h"

#include "core/base/Utf8.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/stringoptions.h>
#include <unicode/unistr.h>

namespace tidemark {

namespace {

bool isTurkic() {
    const std::string_view language = icu::Locale::getDefault().getLanguage();
    return language == "tr" || language == "az";
}

/// `text`, case-folded and composed by the full Unicode rules.
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

/// The case folding of the Latin, Greek and Cyrillic characters that don't compose with the
/// character before, as a table. Each folds to at most `longest` bytes of UTF-8.
class PlainFolding {
public:
    static constexpr std::int32_t end = 0x530;
    static constexpr std::size_t longest = 4;
    struct Entry {
        std::array<char, longest> bytes;
        /// 0 for a character that needs the full rules: its folding can compose with the character
        /// before it, or is not itself composed (NFC).
        std::uint8_t length = 0;
    };

    explicit PlainFolding(bool turkic) {
        UErrorCode status = U_ZERO_ERROR;
        const icu::Normalizer2* normalizer = icu::Normalizer2::getNFCInstance(status);
        for (std::int32_t c = 0; normalizer && c < end; ++c) {
            icu::UnicodeString folded(c);
            folded.foldCase(turkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT);
            if (!standsAlone(*normalizer, folded))
                continue;
            std::string utf8;
            folded.toUTF8String(utf8);
            if (utf8.size() > longest)
                continue;
            std::ranges::copy(utf8, entries[static_cast<std::size_t>(c)].bytes.begin());
            entries[static_cast<std::size_t>(c)].length = static_cast<std::uint8_t>(utf8.size());
        }
    }

    const Entry& operator[](std::int32_t c) const { return entries[static_cast<std::size_t>(c)]; }

    /// One table for Turkic languages and one for all others, each made once.
    static const PlainFolding& of(bool turkic) {
        static const PlainFolding usual(false);
        static const PlainFolding forTurkic(true);
        return turkic ? forTurkic : usual;
    }

private:
    static bool standsAlone(const icu::Normalizer2& normalizer, const icu::UnicodeString& text) {
        UErrorCode status = U_ZERO_ERROR;
        for (std::int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1))
            if (!normalizer.hasBoundaryBefore(text.char32At(i)))
                return false;
        return normalizer.isNormalized(text, status) && U_SUCCESS(status);
    }

    std::array<Entry, end> entries{};
};

/// The dots, dashes and arrows of the program's own texts, and the ideographs: they have no case
/// and don't compose with the character before.
bool isPlainSymbol(std::int32_t character) {
    return (character >= 0x2010 && character <= 0x2027)
           || (character >= 0x2190 && character <= 0x2193) || character == 0x2212
           || (character >= 0x4E00 && character <= 0x9FFF);
}

/// Eight ASCII characters at once.
using Run = std::uint64_t;
constexpr Run everyByte = 0x0101'0101'0101'0101;

constexpr bool isAscii(Run run) {
    return (run & (everyByte * 0x80)) == 0;
}

/// Converts eight ASCII characters to lower case at once. In `fromA`, the high bit of each byte
/// says that the character is 'A' or above; in `beyondZ`, that it is above 'Z'. No byte overflows
/// into the next one.
constexpr Run lowered(Run run) {
    const Run fromA = run + everyByte * (0x80 - 'A');
    const Run beyondZ = run + everyByte * (0x7F - 'Z');
    return run | ((fromA & ~beyondZ & (everyByte * 0x80)) >> 2);
}

/// Folds `text` into the front of `buffer` and returns the length; absent when `text` needs the
/// full rules: it has invalid bytes, or a character that is neither in the table nor a plain
/// symbol.
std::optional<std::size_t> foldPlainText(std::string_view text, std::string& buffer, bool turkic) {
    // Folding at most doubles the length of a character in bytes.
    if (buffer.size() < 2 * text.size())
        buffer.resize(2 * text.size());
    const PlainFolding& folding = PlainFolding::of(turkic);
    char* out = buffer.data();
    for (std::size_t place = 0; place < text.size();) {
        if (Run run = 0; !turkic && text.size() - place >= sizeof run) {
            std::memcpy(&run, text.data() + place, sizeof run);
            if (isAscii(run)) {
                run = lowered(run);
                std::memcpy(out, &run, sizeof run);
                place += sizeof run;
                out += sizeof run;
                continue;
            }
        }
        const std::size_t start = place;
        const auto byte = static_cast<unsigned char>(text[place]);
        const std::int32_t c = byte < 0x80 ? text[place++] : utf8::next(text, place);
        if (c >= 0 && c < PlainFolding::end) {
            const auto& [bytes, length] = folding[c];
            if (length == 0)
                return std::nullopt;
            out = std::copy_n(bytes.begin(), length, out);
        } else if (isPlainSymbol(c)) {
            out = std::copy_n(text.data() + start, place - start, out);
        } else {
            return std::nullopt;
        }
    }
    return static_cast<std::size_t>(out - buffer.data());
}

} // namespace

PhraseSearch::PhraseSearch(std::string_view sought) : turkic(isTurkic()) {
    phrase = foldedByUnicode(sought, turkic);
}

bool PhraseSearch::isIn(std::string_view text) {
    if (const auto length = foldPlainText(text, buffer, turkic))
        return std::string_view(buffer.data(), *length).contains(phrase);
    return foldedByUnicode(text, turkic).contains(phrase);
}

} // namespace tidemark
