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
constexpr double cornerRadius = 3;
/// Of the tile that stands for all strengths of a change.
constexpr double shownStrength = 0.7;

std::array<std::pair<Trend, QString>, 4> entries() {
    return {{{Trend::grew, FolderMapLegend::tr("Grew") + QStringLiteral(" ▲")},
             {Trend::shrank, FolderMapLegend::tr("Shrank") + QStringLiteral(" ▼")},
             {Trend::same, FolderMapLegend::tr("No change")},
             {Trend::unknown, FolderMapLegend::tr("Change unknown")}}};
}

} // namespace

FolderMapLegend::FolderMapLegend(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFont(parent ? parent->font() : font());
    QStringList all;
    for (const auto& [trend, text] : entries())
        all += text;
    setAccessibleName(tr("Colours of the map: %1").arg(all.join(QStringLiteral(", "))));
}

QSize FolderMapLegend::sizeHint() const {
    const int side = fontMetrics().ascent();
    int width = 0;
    for (const auto& [trend, text] : entries())
        width += side + gap + fontMetrics().horizontalAdvance(text) + betweenEntries;
    return {width, fontMetrics().height() + 2};
}

void FolderMapLegend::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int side = fontMetrics().ascent();
    int x = 0;
    for (const auto& [trend, text] : entries()) {
        const auto visual = [&](const QRect& area) {
            return QStyle::visualRect(layoutDirection(), rect(), area);
        };
        const QRect swatch = visual({x, (height() - side) / 2, side, side});
        const QColor surface = folderMapColors::tile(palette(), trend, shownStrength);
        painter.setPen(Qt::NoPen);
        painter.setBrush(surface);
        painter.drawRoundedRect(swatch, cornerRadius, cornerRadius);
        painter.setBrush(QBrush(folderMapColors::patternOn(palette(), trend, surface),
                                folderMapColors::pattern(trend)));
        painter.drawRoundedRect(swatch, cornerRadius, cornerRadius);
        x += side + gap;
        const int width = fontMetrics().horizontalAdvance(text) + 2;
        painter.setPen(textColor::dimmed(palette().color(QPalette::Active, QPalette::Text)));
        painter.drawText(visual({x, 0, width, height()}), Qt::AlignCenter | Qt::TextSingleLine,
                         isolated(text));
        x += width + betweenEntries;
    }
}

void FolderMapLegend::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        updateGeometry();
}

} // namespace tidemark
