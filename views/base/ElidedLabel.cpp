#include "views/base/ElidedLabel.h"

#include "views/base/ShownText.h"
#include "views/base/TextColor.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace tidemark {

ElidedLabel::ElidedLabel(Qt::TextElideMode elided, QWidget* parent)
    : QLabel(parent), elision(elided) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize ElidedLabel::minimumSizeHint() const {
    return {fontMetrics().horizontalAdvance(u'…'), fontMetrics().height()};
}

void ElidedLabel::setDim() {
    isDim = true;
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !toolTip().isEmpty()
        || fontMetrics().horizontalAdvance(text()) <= contentsRect().width())
        return QLabel::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), asPlainText(isolated(text())),
                       this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor color = palette().color(foregroundRole());
    painter.setPen(isDim ? textColor::dimmed(color) : color);
    const QRect area = contentsRect();
    const QString shown = fontMetrics().elidedText(text(), elision, area.width());
    const auto flags = QStyle::visualAlignment(layoutDirection(), alignment());
    painter.drawText(area, static_cast<int>(flags) | Qt::TextSingleLine, isolated(shown));
}

} // namespace tidemark
