#include "views/base/CrossButton.h"

#include "views/base/TextColor.h"
#include "views/base/TintedSymbol.h"

#include <QEvent>

namespace tidemark {

namespace {

constexpr int side = 16;

} // namespace

CrossButton::CrossButton(const QString& purpose, QWidget* parent) : QToolButton(parent) {
    setAutoRaise(true);
    setIconSize({side, side});
    setToolTip(purpose);
    setAccessibleName(purpose);
    drawCross();
}

void CrossButton::changeEvent(QEvent* event) {
    QToolButton::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        drawCross();
}

void CrossButton::drawCross() {
    const QColor color = textColor::dimmed(palette().color(QPalette::Active, QPalette::ButtonText));
    setIcon(tintedSymbol("xmark", side, color, devicePixelRatioF()));
}

} // namespace tidemark
