#include "views/folders/DashedPanel.h"

#include <QPainter>

namespace tidemark {

namespace {

constexpr double cornerRadius = 4;
constexpr float frameStrength = 0.4F;

} // namespace

void DashedPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor frame = palette().color(QPalette::Active, QPalette::Text);
    frame.setAlphaF(frameStrength);
    painter.setPen(QPen(frame, 1, Qt::DashLine));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius,
                            cornerRadius);
}

} // namespace tidemark
