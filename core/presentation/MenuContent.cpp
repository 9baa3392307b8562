#include "core/presentation/MenuContent.h"

#include "core/base/Text.h"
#include "core/base/Utf8.h"
#include "core/presentation/EventRow.h"
#include "core/presentation/SystemWords.h"

#include <algorithm>

namespace tidemark {

namespace {

using EntryKind = MenuEntry::Kind;
using systemWords::shown;

constexpr std::size_t recentEvents = 5;
constexpr std::size_t recentClips = 3;
/// In characters; menus grow as wide as their longest entry.
constexpr std::size_t longestLabel = 60;

MenuEntry text(std::string_view label) {
    return {
        .kind = EntryKind::text, .label = shortLabel(oneLine(shown(label))), .isEnabled = false};
}

MenuEntry command(EntryKind kind, std::string_view label, std::string_view symbol = {}) {
    return {.kind = kind, .label = shown(label), .symbol = std::string(symbol)};
}

MenuEntry entryOf(const Shared<Event>& event) {
    return {.kind = EntryKind::event,
            .label = shortLabel(shownTitle(*event)),
            .symbol = event->symbol,
            .event = event};
}

MenuEntry clipOf(const Shared<Event>& event) {
    MenuEntry entry = entryOf(event);
    entry.kind = EntryKind::clip;
    entry.isPinned = event->memory->pinned;
    return entry;
}

void addRecent(std::vector<MenuEntry>& menu, const std::vector<Shared<Event>>& timeline) {
    menu.push_back(text("RECENT ACTIVITY"));
    for (std::size_t i = 0; i < std::min(timeline.size(), recentEvents); ++i)
        menu.push_back(entryOf(timeline[i]));
    if (timeline.empty())
        menu.push_back(text("Recorded changes will appear here after an observation."));
    else
        menu.push_back(command(EntryKind::viewAll, "View all"));
}

void addSearch(std::vector<MenuEntry>& menu, std::string_view keys) {
    const std::string label =
        keys.empty() ? "Search history · ⌃⇧Space" : "Search history · " + std::string(keys);
    menu.push_back(command(EntryKind::search, label, "search"));
    menu.push_back({.kind = EntryKind::separator});
}

void addClips(std::vector<MenuEntry>& menu, const std::vector<Shared<Event>>& history) {
    std::vector<MenuEntry> clips;
    for (const auto& event : history) {
        if (clips.size() == recentClips)
            break;
        if (event->memory && event->memory->kind == MemoryRecord::Kind::clipboard)
            clips.push_back(clipOf(event));
    }
    if (clips.empty())
        return;
    menu.push_back({.kind = EntryKind::separator});
    menu.push_back(text("CLIPBOARD"));
    std::ranges::move(clips, std::back_inserter(menu));
}

} // namespace

std::vector<MenuEntry> menuContent(const MenuState& state) {
    std::vector<MenuEntry> menu{text(state.status), {.kind = EntryKind::separator}};
    if (state.searchKeys)
        addSearch(menu, *state.searchKeys);
    addRecent(menu, state.timeline);
    addClips(menu, state.history);
    menu.push_back({.kind = EntryKind::separator});
    menu.push_back(command(EntryKind::search, "Search History…", "search"));
    menu.push_back(command(EntryKind::openTimeline, "Open Timeline", "clock"));
    menu.push_back(command(EntryKind::openProgram, "Open Tidemark", "app"));
    menu.push_back({.kind = EntryKind::separator});
    MenuEntry recording = command(EntryKind::changeRecording,
                                  state.isRecording ? "Pause recording" : "Resume recording",
                                  state.isRecording ? "pause.circle" : "play");
    recording.isEnabled = state.canChangeRecording;
    menu.push_back(std::move(recording));
    menu.push_back(command(EntryKind::quit, "Quit Tidemark"));
    menu.push_back(text("History stays on your Mac"));
    return menu;
}

std::string shortLabel(const std::string& text) {
    std::size_t place = 0;
    for (std::size_t count = 0; count + 1 < longestLabel && place < text.size(); ++count)
        utf8::next(text, place);
    std::size_t following = place;
    if (following < text.size())
        utf8::next(text, following);
    return following >= text.size() ? text : text.substr(0, place) + "…";
}

} // namespace tidemark
