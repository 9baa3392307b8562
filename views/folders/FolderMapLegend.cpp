#include "views/folders/FolderMapLegend.h"

#include "views/base/ShownText.h"
#include "views/base/TextColor.h"
#include "views/folders/FolderMapColors.h"

#include <QEvent>
#include <QPainter>
#include <array>
#include <utility>

namespace tidemark {

namespace {

using Trend = FolderMap::Trend;

constexpr int gap = 6;
constexpr int betweenEntries = 16;
constexpr double legendRadius = 3;
/// How strong the change of an example tile is, 0 to 1. In the map, stronger changes have stronger
/// colours.
constexpr double shownStrength = 0.7;

std::array<std::pair<Trend, QString>, 4> entries() {
    return {{{Trend::grew, FolderMapLegend::tr("Grew") + QStringLiteral(" ▲")},
             {Trend::shrank, FolderMapLegend::tr("Shrank") + QStringLiteral(" ▼")},
             {Trend::same, FolderMapLegend::tr("No change")},
             {Trend::unknown, FolderMapLegend::tr("Change unknown")}}};
}

} // namespace

FolderMapLegend::FolderMapLegend(QWidget* parent) : QWidget(parent) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setFont(parent ? parent->font() : font());
    QStringList all;
    for (const auto& [trend, text] : entries())
        all += text;
    setAccessibleName(tr("Colours of the map: %1").arg(all.join(QStringLiteral(", "))));
}

QSize FolderMapLegend::sizeHint() const {
    int width = 0;
    for (const auto& [trend, text] : entries())
        width += widthOf(text) + betweenEntries;
    return {width, lineHeight()};
}

int FolderMapLegend::heightForWidth(int width) const {
    return placesIn(width).back().y() + lineHeight();
}

int FolderMapLegend::lineHeight() const {
    return fontMetrics().height() + 2;
}

int FolderMapLegend::widthOf(const QString& entry) const {
    return fontMetrics().ascent() + gap + fontMetrics().horizontalAdvance(entry) + 2;
}

std::vector<QPoint> FolderMapLegend::placesIn(int width) const {
    std::vector<QPoint> places;
    QPoint next;
    for (const auto& [trend, text] : entries()) {
        if (next.x() > 0 && next.x() + widthOf(text) > width)
            next = {0, next.y() + lineHeight()};
        places.push_back(next);
        next.rx() += widthOf(text) + betweenEntries;
    }
    return places;
}

void FolderMapLegend::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int side = fontMetrics().ascent();
    const auto places = placesIn(width());
    auto place = places.begin();
    for (const auto& [trend, text] : entries()) {
        const auto [x, y] = std::pair(place->x(), place->y());
        ++place;
        const auto visual = [&](const QRect& area) {
            return QStyle::visualRect(layoutDirection(), rect(), area);
        };
        const QRect swatch = visual({x, y + (lineHeight() - side) / 2, side, side});
        const QColor surface = folderMapColors::tile(palette(), trend, shownStrength);
        painter.setPen(Qt::NoPen);
        painter.setBrush(surface);
        painter.drawRoundedRect(swatch, legendRadius, legendRadius);
        painter.setBrush(QBrush(folderMapColors::patternOn(palette(), trend, surface),
                                folderMapColors::pattern(trend)));
        painter.drawRoundedRect(swatch, legendRadius, legendRadius);
        const int before = side + gap;
        painter.setPen(textColor::dimmed(palette().color(QPalette::Active, QPalette::Text)));
        painter.drawText(visual({x + before, y, widthOf(text) - before, lineHeight()}),
                         Qt::AlignCenter | Qt::TextSingleLine, isolated(text));
    }
}

void FolderMapLegend::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        updateGeometry();
}

} // namespace tidemark
