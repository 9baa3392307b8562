#include "views/workspace/EventDelegate.h"

#include "views/base/ShownText.h"
#include "views/base/Symbols.h"
#include "views/base/TextColor.h"
#include "views/workspace/TimelineModel.h"

#include <QApplication>
#include <QPainter>

namespace tidemark {

namespace {

/// All lengths of a row, from its font.
struct Metrics {
    explicit Metrics(const QFont& font) : text(font), line(text.height()), pad(line / 2) {}

    QFontMetrics text;
    int line;
    int pad;

    int icon() const { return line + pad / 2; }
    int rowHeight(bool hasSubtitle) const { return (hasSubtitle ? 2 : 1) * line + 2 * pad; }
    int dayHeight() const { return line + 2 * pad; }
};

QFont bold(QFont font) {
    font.setBold(true);
    return font;
}

/// Draws texts from the leading edge of a row on, whatever the direction of the window.
class RowPainter {
public:
    RowPainter(QPainter& used, const QStyleOptionViewItem& styled)
        : painter(used), option(styled), metrics(styled.font) {}

    void drawDay(const QString& heading) const {
        const QRect area = option.rect.adjusted(metrics.pad, metrics.pad, -metrics.pad, 0);
        drawText(area, heading, bold(option.font), textColor::dim(option), Qt::AlignVCenter);
    }

    void drawEvent(const EventRow& row) const {
        drawSymbol(row);
        QRect text = option.rect.adjusted(2 * metrics.pad + metrics.icon(), metrics.pad,
                                          -metrics.pad, -metrics.pad);
        QRect first = text;
        first.setHeight(metrics.line);
        const QString time = QString::fromStdString(row.time);
        const int timeWidth = metrics.text.horizontalAdvance(time) + metrics.pad;
        drawText(first, time, option.font, textColor::dim(option), Qt::AlignTrailing);
        drawText(first.adjusted(0, 0, -timeWidth, 0), QString::fromStdString(row.title),
                 row.isProminent ? bold(option.font) : option.font, textColor::strong(option),
                 Qt::AlignLeading);
        text.setTop(first.bottom() + 1);
        drawText(text, secondLine(row), option.font, textColor::dim(option), Qt::AlignLeading);
    }

    static QString secondLine(const EventRow& row) {
        const QString subtitle = QString::fromStdString(row.subtitle);
        if (row.importedLabel.empty())
            return subtitle;
        const QString imported = shownText(row.importedLabel);
        return subtitle.isEmpty() ? imported : subtitle + QStringLiteral(" · ") + imported;
    }

private:
    void drawSymbol(const EventRow& row) const {
        const QRect area(option.rect.left() + metrics.pad, option.rect.top() + metrics.pad,
                         metrics.icon(), metrics.icon());
        const auto mode = option.state & QStyle::State_Selected ? QIcon::Selected : QIcon::Normal;
        symbolIcon(row.symbol).paint(&painter, visual(area), Qt::AlignCenter, mode);
    }

    void drawText(const QRect& area, const QString& text, const QFont& font, const QColor& color,
                  Qt::Alignment alignment) const {
        const QString elided = QFontMetrics(font).elidedText(text, Qt::ElideRight, area.width());
        painter.setFont(font);
        painter.setPen(color);
        painter.drawText(visual(area),
                         static_cast<int>(QStyle::visualAlignment(option.direction, alignment))
                             | Qt::AlignVCenter | Qt::TextSingleLine,
                         isolated(elided));
    }

    QRect visual(const QRect& area) const {
        return QStyle::visualRect(option.direction, option.rect, area);
    }

    QPainter& painter;
    const QStyleOptionViewItem& option;
    Metrics metrics;
};

} // namespace

void EventDelegate::paint(QPainter* painter, const QStyleOptionViewItem& styled,
                          const QModelIndex& index) const {
    QStyleOptionViewItem option = styled;
    initStyleOption(&option, index);
    painter->save();
    const RowPainter row(*painter, option);
    if (index.data(TimelineModel::isDayRole).toBool()) {
        row.drawDay(option.text);
    } else {
        const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
        style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
        row.drawEvent(index.data(TimelineModel::rowRole).value<EventRow>());
    }
    painter->restore();
}

QSize EventDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const Metrics metrics(option.font);
    const bool isDay = index.data(TimelineModel::isDayRole).toBool();
    return {metrics.line, isDay ? metrics.dayHeight() : metrics.rowHeight(true)};
}

} // namespace tidemark
