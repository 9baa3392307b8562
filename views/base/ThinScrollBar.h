#pragma once

class QAbstractScrollArea;

namespace tidemark {

/// Gives an area vertical and horizontal scroll bars without buttons, 12 pixels wide with a handle
/// of 5 pixels, whatever the style of the desktop.
void useThinScrollBars(QAbstractScrollArea& area);

} // namespace tidemark
