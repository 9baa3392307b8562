#include "views/workspace/EventDelegate.h"

#include "views/base/Fonts.h"
#include "views/base/ListRow.h"
#include "views/base/RowPainter.h"
#include "views/base/ShownText.h"
#include "views/workspace/TimelineModel.h"

#include <QPainter>

namespace tidemark {

namespace {

/// Pixels from the edge of the list to the panel of a row.
constexpr int margin = 10;

/// The sizes of the parts of a row in pixels, which follow from its font.
struct Metrics {
    explicit Metrics(const QFont& used) : font(used), line(QFontMetrics(font).height()) {}

    QFont font;
    int line;

    int pad() const { return line / 2; }
    int eventHeight() const { return ListRow::heightOfTwoLines(font); }
    int gapHeight() const { return line + pad() + 6; }
    int dayHeight() const { return 2 * line + pad(); }
    /// From the edge of the list to the texts.
    int indent() const { return margin + ListRow::indent(font, true); }
};

QString secondLine(const EventRow& row) {
    QString subtitle = QString::fromStdString(row.subtitle);
    if (row.importedLabel.empty())
        return subtitle;
    const QString imported = shownText(row.importedLabel);
    return subtitle.isEmpty() ? imported : subtitle + QStringLiteral(" · ") + imported;
}

void drawDay(const RowPainter& row, const QStyleOptionViewItem& option, const QString& count) {
    const Metrics metrics(option.font);
    QRect area = option.rect.adjusted(2 * margin, 0, -2 * margin, -metrics.pad() / 2);
    area.setTop(area.bottom() - metrics.line);
    row.drawText(area, count, row.dim(), fonts::smaller(option.font), Qt::AlignTrailing);
    area.adjust(0, 0, -option.fontMetrics.horizontalAdvance(count) - metrics.pad(), 0);
    row.drawText(area, option.text, row.strong(), fonts::bold(option.font));
}

/// Draws a period in which nothing was observed: stripes, and on them how long it was and why.
void drawGap(const RowPainter& row, const QStyleOptionViewItem& option, const EventRow& texts,
             bool isFolded) {
    const Metrics metrics(option.font);
    const QRect panel = option.rect.adjusted(margin, 2, -margin, -2);
    row.drawPanel(panel);
    QRect stripes = panel.adjusted(metrics.indent() - margin, 0, -metrics.pad(), 0);
    stripes.setHeight(metrics.line + 2);
    stripes.moveCenter({stripes.center().x(), panel.center().y()});
    if (!row.isSelected())
        row.drawHatch(stripes);
    const QFont font = fonts::smaller(option.font);
    QString text = QString::fromStdString(texts.title);
    if (const auto& why = texts.subtitle; !why.empty())
        text += QStringLiteral(" · ") + QString::fromStdString(why);
    if (isFolded)
        text += QStringLiteral("  ▾");
    const int width =
        std::min(stripes.width(), QFontMetrics(font).horizontalAdvance(text) + 2 * metrics.pad());
    QRect label(0, 0, width, stripes.height());
    label.moveCenter(stripes.center());
    if (!row.isSelected())
        row.fill(label, option.palette.color(QPalette::Base));
    row.drawText(label, text, row.dim(), font, Qt::AlignHCenter);
}

void drawEvent(const RowPainter& row, const QStyleOptionViewItem& option, const EventRow& texts) {
    const QRect panel = option.rect.adjusted(margin, 1, -margin, -1);
    row.drawPanel(panel);
    ListRow{.symbol = texts.symbol,
            .title = QString::fromStdString(texts.title),
            .trailing = QString::fromStdString(texts.time),
            .below = secondLine(texts),
            .isMarked = texts.isProminent}
        .draw(row, option.font, panel);
}

} // namespace

void EventDelegate::paint(QPainter* painter, const QStyleOptionViewItem& styled,
                          const QModelIndex& index) const {
    QStyleOptionViewItem option = styled;
    initStyleOption(&option, index);
    painter->save();
    const RowPainter row(*painter, option);
    switch (TimelineModel::kindOf(index)) {
    case TimelineModel::RowKind::day:
        drawDay(row, option, index.data(TimelineModel::countRole).toString());
        break;
    case TimelineModel::RowKind::gap:
    case TimelineModel::RowKind::gaps:
        drawGap(row, option, index.data(TimelineModel::rowRole).value<EventRow>(),
                TimelineModel::kindOf(index) == TimelineModel::RowKind::gaps);
        break;
    case TimelineModel::RowKind::event:
        drawEvent(row, option, index.data(TimelineModel::rowRole).value<EventRow>());
        break;
    }
    painter->restore();
}

QSize EventDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const Metrics metrics(option.font);
    switch (TimelineModel::kindOf(index)) {
    case TimelineModel::RowKind::day:
        return {metrics.line, metrics.dayHeight()};
    case TimelineModel::RowKind::gap:
    case TimelineModel::RowKind::gaps:
        return {metrics.line, metrics.gapHeight()};
    case TimelineModel::RowKind::event:
        break;
    }
    return {metrics.line, metrics.eventHeight()};
}

} // namespace tidemark
