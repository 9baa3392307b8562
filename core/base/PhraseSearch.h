#pragma once

#include <string>
#include <string_view>

namespace tidemark {

/// Looks for one phrase in many texts without regard to letter case, by Unicode case folding and
/// canonical equivalence: "café" is found however it was composed. Not trimmed or split. Letters
/// with a dot fold by the Turkish rules where the user's language has them. Not for several
/// threads at once.
class PhraseSearch {
public:
    explicit PhraseSearch(std::string_view phrase);

    /// True when `text` contains the phrase. An empty phrase is in every text.
    bool isIn(std::string_view text);

private:
    std::string phrase;
    /// Room for folded texts, of which each takes up the front.
    std::string room;
    bool turkic = false;
};

} // namespace tidemark
