#include "views/workspace/EventDelegate.h"

#include "views/base/RowPainter.h"
#include "views/base/ShownText.h"
#include "views/workspace/TimelineModel.h"

#include <QPainter>

namespace tidemark {

namespace {

/// From the edge of the list to the panel of a row.
constexpr int margin = 10;
constexpr double secondLineScale = 0.92;

QFont bold(QFont font) {
    font.setBold(true);
    return font;
}

QFont second(QFont font) {
    font.setPointSizeF(font.pointSizeF() * secondLineScale);
    return font;
}

/// All lengths of a row, from its font.
struct Metrics {
    explicit Metrics(const QFont& font) : text(font), line(text.height()) {}

    QFontMetrics text;
    int line;

    int pad() const { return line / 2; }
    int symbol() const { return line + 4; }
    int dot() const { return line / 3; }
    int eventHeight() const { return 2 * line + 2 * pad() + 4; }
    int gapHeight() const { return line + 2 * pad() + 4; }
    int dayHeight() const { return 2 * line + pad(); }
    /// Where the texts begin, from the edge of the list.
    int indent() const { return margin + pad() + dot() + symbol() + 2 * pad(); }
};

QString secondLine(const EventRow& row) {
    const QString subtitle = QString::fromStdString(row.subtitle);
    if (row.importedLabel.empty())
        return subtitle;
    const QString imported = shownText(row.importedLabel);
    return subtitle.isEmpty() ? imported : subtitle + QStringLiteral(" · ") + imported;
}

void drawDay(const RowPainter& row, const QStyleOptionViewItem& option, const QString& count) {
    const Metrics metrics(option.font);
    QRect area = option.rect.adjusted(2 * margin, 0, -2 * margin, -metrics.pad() / 2);
    area.setTop(area.bottom() - metrics.line);
    row.drawText(area, count, row.dim(), second(option.font), Qt::AlignTrailing);
    area.adjust(0, 0, -metrics.text.horizontalAdvance(count) - metrics.pad(), 0);
    row.drawText(area, option.text, row.strong(), bold(option.font));
}

/// A time in which nothing was observed: stripes, and in their middle how long.
void drawGap(const RowPainter& row, const QStyleOptionViewItem& option, const EventRow& texts) {
    const Metrics metrics(option.font);
    const QRect panel = option.rect.adjusted(margin, 2, -margin, -2);
    row.drawPanel(panel);
    QRect stripes = panel.adjusted(metrics.indent() - margin, 0, -metrics.pad(), 0);
    stripes.setHeight(metrics.line + 6);
    stripes.moveCenter({stripes.center().x(), panel.center().y()});
    if (!row.isSelected())
        row.drawHatch(stripes);
    const QFont font = second(option.font);
    const QString text = QString::fromStdString(texts.title) + QStringLiteral(" · ")
                         + QString::fromStdString(texts.time);
    const int width =
        std::min(stripes.width(), QFontMetrics(font).horizontalAdvance(text) + 2 * metrics.pad());
    QRect label(0, 0, width, stripes.height());
    label.moveCenter(stripes.center());
    if (!row.isSelected())
        row.fill(label, option.palette.color(QPalette::Base));
    row.drawText(label, text, row.dim(), font, Qt::AlignHCenter);
}

void drawEvent(const RowPainter& row, const QStyleOptionViewItem& option, const EventRow& texts) {
    const Metrics metrics(option.font);
    const QRect panel = option.rect.adjusted(margin, 1, -margin, -1);
    row.drawPanel(panel);
    if (texts.isProminent)
        row.drawDot({panel.left() + metrics.pad() * 2 / 3,
                     panel.center().y() - metrics.dot() / 2 + 1, metrics.dot(), metrics.dot()},
                    row.accent());
    row.drawSymbol({panel.left() + metrics.pad() + metrics.dot() + metrics.pad() / 2, panel.top(),
                    metrics.symbol(), panel.height()},
                   texts.symbol, row.strong());
    QRect area = panel.adjusted(metrics.indent() - margin, 0, -metrics.pad() - 2, 0);
    const QString below = secondLine(texts);
    QRect first = area;
    first.setHeight(metrics.line + 2);
    first.moveTop(below.isEmpty() ? panel.center().y() - first.height() / 2
                                  : panel.center().y() - first.height() + 1);
    const QString time = QString::fromStdString(texts.time);
    const QFont small = second(option.font);
    row.drawText(first, time, row.dim(), small, Qt::AlignTrailing);
    QRect rest = first;
    rest.setTop(first.bottom() + 1);
    rest.setHeight(metrics.line);
    first.adjust(0, 0, -QFontMetrics(small).horizontalAdvance(time) - 2 * metrics.pad(), 0);
    row.drawText(first, QString::fromStdString(texts.title), row.strong(), option.font);
    row.drawText(rest, below, row.dim(), small);
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
        drawGap(row, option, index.data(TimelineModel::rowRole).value<EventRow>());
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
        return {metrics.line, metrics.gapHeight()};
    case TimelineModel::RowKind::event:
        break;
    }
    return {metrics.line, metrics.eventHeight()};
}

} // namespace tidemark
