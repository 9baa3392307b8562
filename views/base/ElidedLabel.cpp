#include "views/base/ElidedLabel.h"

#include "views/base/ShownText.h"

#include <QPainter>
#include <QStyle>

namespace tidemark {

ElidedLabel::ElidedLabel(Qt::TextElideMode elided, QWidget* parent)
    : QLabel(parent), elision(elided) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize ElidedLabel::minimumSizeHint() const {
    return {fontMetrics().horizontalAdvance(u'…'), fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const QString shown = fontMetrics().elidedText(text(), elision, width());
    const auto flags = QStyle::visualAlignment(layoutDirection(), alignment());
    painter.drawText(rect(), static_cast<int>(flags) | Qt::TextSingleLine, isolated(shown));
}

} // namespace tidemark
