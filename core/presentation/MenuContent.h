#pragma once

#include "core/records/Event.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// One entry of the menu beside the clock. A desktop draws that menu itself, so all that an entry
/// can have is a text, an image and whether it can be chosen.
struct MenuEntry {
    enum class Kind {
        /// Can't be chosen: the recording status, a heading or a note.
        text,
        separator,
        event,
        clip,
        viewAll,
        search,
        openTimeline,
        openProgram,
        changeRecording,
        quit,
    };

    Kind kind = Kind::text;
    std::string label{};
    /// Name of the symbol image; may be empty.
    std::string symbol{};
    /// What `event` opens, and what `clip` shows, copies, pins or unpins.
    OptionalShared<Event> event{};
    /// True for a pinned clip.
    bool isPinned = false;
    bool isEnabled = true;

    bool operator==(const MenuEntry&) const = default;
};

/// The state from which the menu is made.
struct MenuState {
    /// The recording status.
    std::string_view status;
    bool isRecording = true;
    bool canChangeRecording = true;
    /// Newest first.
    const std::vector<Shared<Event>>& timeline;
    const std::vector<Shared<Event>>& history;
    /// The keys that open the search panel from any program, as the desktop shows them; empty for
    /// Control–Shift–Space, absent when there are none.
    std::optional<std::string_view> searchKeys = "";
};

/// The whole menu, in order and in the words of this system.
std::vector<MenuEntry> menuContent(const MenuState& state);

/// The text, cut off after as many characters as a menu should be wide. The labels of `menuContent`
/// are cut off already.
std::string shortLabel(const std::string& text);

} // namespace tidemark
