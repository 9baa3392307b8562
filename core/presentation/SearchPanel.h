#pragma once

#include "core/base/Calendar.h"
#include "core/records/Event.h"

#include <cstddef>
#include <string>

namespace tidemark {

/// The keys that the search panel takes before its field gets them.
enum class SearchPanelKey { up, down, pageUp, pageDown, enter, escape, other };

/// What a key does there.
struct SearchPanelAction {
    enum class Kind { type, moveSelection, openSelected, dismiss };

    /// `type` leaves the key to the field, also where the list has the focus.
    Kind kind = Kind::type;
    /// Of `moveSelection`: by how many results.
    std::ptrdiff_t delta = 0;

    bool operator==(const SearchPanelAction&) const = default;
};

/// `page`: how many results the panel shows at once.
SearchPanelAction actionOf(SearchPanelKey key, std::ptrdiff_t page);

/// One result, each text on a single line and in the words of this system.
struct SearchResultRow {
    std::string title;
    /// What it is about, and where it belongs.
    std::string subtitle;
    std::string when;
    /// Name of the symbol image.
    std::string symbol;
    /// All of that in one sentence, for a screen reader.
    std::string accessibleText;

    static SearchResultRow of(const Event& event, const Calendar& calendar);
};

} // namespace tidemark
