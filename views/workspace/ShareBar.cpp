#include "views/workspace/ShareBar.h"

#include "views/base/TextColor.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <cmath>

namespace tidemark {

namespace {

constexpr int thickness = 9;
constexpr int shortest = 3;
constexpr double corner = 2.5;

} // namespace

ShareBar::ShareBar(double wanted, QWidget* parent)
    : QWidget(parent), share(std::clamp(wanted, -1.0, 1.0)) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setMinimumHeight(thickness);
}

void ShareBar::paintEvent(QPaintEvent*) {
    const int length = std::max(shortest, static_cast<int>(std::lround(width() * std::abs(share))));
    const QRect bar(0, (height() - thickness) / 2, length, thickness);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(share < 0 ? textColor::dimmed(palette().color(QPalette::Text))
                               : palette().color(QPalette::Highlight));
    painter.drawRoundedRect(QStyle::visualRect(layoutDirection(), rect(), bar), corner, corner);
}

} // namespace tidemark
