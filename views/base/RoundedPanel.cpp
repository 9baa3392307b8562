#include "views/base/RoundedPanel.h"

#include <QPainter>

namespace tidemark {

namespace {

constexpr double cornerRadius = 8;

} // namespace

void RoundedPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Midlight));
    painter.setBrush(palette().color(QPalette::Window));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius,
                            cornerRadius);
}

} // namespace tidemark
