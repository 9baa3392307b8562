#include "core/presentation/SearchPanel.h"

#include "core/presentation/EventRow.h"
#include "core/presentation/SystemWords.h"

#include <algorithm>

namespace tidemark {

SearchPanelAction actionOf(SearchPanelKey key, std::ptrdiff_t page) {
    using Kind = SearchPanelAction::Kind;
    page = std::max<std::ptrdiff_t>(page, 1);
    switch (key) {
    case SearchPanelKey::up:
        return {Kind::moveSelection, -1};
    case SearchPanelKey::down:
        return {Kind::moveSelection, 1};
    case SearchPanelKey::pageUp:
        return {Kind::moveSelection, -page};
    case SearchPanelKey::pageDown:
        return {Kind::moveSelection, page};
    case SearchPanelKey::enter:
        return {Kind::openSelected};
    case SearchPanelKey::escape:
        return {Kind::dismiss};
    case SearchPanelKey::other:
        break;
    }
    return {};
}

SearchResultRow SearchResultRow::of(const Event& event, const Calendar& calendar) {
    const EventRow row = EventRow::of(event, calendar);
    SearchResultRow result;
    result.title = row.title;
    result.subtitle = row.subtitle;
    result.category = systemWords::shown(rawValue(event.category));
    result.when = calendar.format(event.timestamp, "d MMM yyyy, HH:mm");
    result.symbol = row.symbol;
    return result;
}

std::string SearchResultRow::below() const {
    return subtitle.empty() ? category : subtitle + " · " + category;
}

std::string SearchResultRow::accessibleText() const {
    return title + ", " + below() + ", " + when;
}

} // namespace tidemark
