#pragma once

#include "core/base/Calendar.h"
#include "core/records/Event.h"

#include <cstddef>
#include <string>

namespace tidemark {

/// The keys that the search panel handles before its text field.
enum class SearchPanelKey { up, down, pageUp, pageDown, enter, escape, other };

/// The action of a key.
struct SearchPanelAction {
    enum class Kind { type, moveSelection, openSelected, dismiss };

    /// `type` passes the key to the field, also when the list has the focus.
    Kind kind = Kind::type;
    /// By how many results `moveSelection` moves.
    std::ptrdiff_t delta = 0;

    bool operator==(const SearchPanelAction&) const = default;
};

/// `page`: how many results the panel shows at once.
SearchPanelAction actionOf(SearchPanelKey key, std::ptrdiff_t page);

/// The texts of one result, without line breaks, in the terms of the operating system that the
/// program runs on.
struct SearchResultRow {
    std::string title;
    /// The second line of the event; may be empty.
    std::string subtitle;
    std::string category;
    std::string when;
    /// Name of the symbol image.
    std::string symbol;

    static SearchResultRow of(const Event& event, const Calendar& calendar);
    /// The second line of the result: the subtitle of the event, if it has one, and the category.
    std::string below() const;
    /// All texts of the result in one sentence, for a screen reader.
    std::string accessibleText() const;
};

} // namespace tidemark
