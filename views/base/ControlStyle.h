#pragma once

namespace tidemark {

/// Draws controls as the style of the desktop does, with some room at both sides of the texts of
/// buttons. Where that is Qt's own style, which is made for light colours, also with a flat toolbar
/// and with frames of check boxes that are seen on dark ones. Called once, before windows are made.
void useControlStyle();

} // namespace tidemark
