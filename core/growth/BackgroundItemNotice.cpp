#include "core/growth/BackgroundItemNotice.h"

#include "core/base/Text.h"

#include <algorithm>

namespace tidemark {

namespace {

std::string namesOf(const std::vector<NewBackgroundItem>& items) {
    std::vector<std::string> names;
    for (const auto& item : items) {
        if (names.size() == BackgroundItemNotice::nameLimit) {
            names.push_back("and " + std::to_string(items.size() - names.size()) + " more");
            break;
        }
        names.push_back(item.name);
    }
    return joined(names, ", ");
}

/// The moment is not known, only the two captures between which an item appeared.
std::string since(const std::vector<NewBackgroundItem>& items, const Calendar& calendar) {
    Date earliest = items.front().event->intervalStart;
    for (const auto& item : items)
        earliest = std::min(earliest, item.event->intervalStart);
    return "Found since the capture of " + calendar.format(earliest, "d MMM yyyy, HH:mm") + ".";
}

} // namespace

std::optional<BackgroundItemNotice>
BackgroundItemNotice::of(const std::vector<NewBackgroundItem>& items, const Calendar& calendar) {
    if (items.empty())
        return std::nullopt;
    BackgroundItemNotice notice;
    notice.eventID = items.front().event->id;
    notice.body = since(items, calendar);
    if (items.size() == 1) {
        notice.title = "New background item: " + items.front().name;
    } else {
        notice.title = std::to_string(items.size()) + " new background items";
        notice.body = namesOf(items) + "\n" + notice.body;
    }
    return notice;
}

} // namespace tidemark
