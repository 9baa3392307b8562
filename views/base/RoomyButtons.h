#pragma once

namespace tidemark {

/// Gives the texts of all buttons some room at both sides, in whatever style the desktop has. Some
/// draw the frame of a long text next to its letters. Called once, before windows are made.
void useRoomyButtons();

} // namespace tidemark
