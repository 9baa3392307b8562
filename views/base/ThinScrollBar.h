#pragma once

class QAbstractScrollArea;

namespace tidemark {

/// Gives an area vertical and horizontal scroll bars without buttons, a third as wide as those of
/// the style.
void useThinScrollBars(QAbstractScrollArea& area);

} // namespace tidemark
