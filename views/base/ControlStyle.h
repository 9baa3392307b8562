#pragma once

namespace tidemark {

/// Draws controls as the style of the desktop does, with some room at both sides of the texts of
/// buttons and around the buttons of toolbars. If that style is Qt's own, which is made for light
/// colours, toolbars are also drawn flat, and check boxes with a frame that can be seen on dark
/// colours. Called once, before windows are made.
void useControlStyle();

} // namespace tidemark
