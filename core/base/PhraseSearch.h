#pragma once

#include <string>
#include <string_view>

namespace tidemark {

/// Looks for one phrase in many texts without regard to letter case, by Unicode case folding and
/// canonical equivalence: "café" is found whether its é is one code point or two. The phrase is
/// neither trimmed nor split into words. In Turkish and Azerbaijani locales, dotted and dotless i
/// are folded by the Turkish rules. Not thread-safe.
class PhraseSearch {
public:
    explicit PhraseSearch(std::string_view phrase);

    /// True when `text` contains the phrase. An empty phrase is in every text.
    bool isIn(std::string_view text);

private:
    std::string phrase;
    /// Buffer for the folded text, reused from call to call.
    std::string buffer;
    bool turkic = false;
};

} // namespace tidemark
