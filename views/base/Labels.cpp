#include "views/base/Labels.h"

#include "views/base/Fonts.h"
#include "views/base/TextColor.h"

#include <QApplication>
#include <QEvent>
#include <QStyle>

namespace tidemark {

namespace {

/// Qt aligns a text by its own direction, so that an English one would stand at the wrong edge of a
/// window that is laid out from right to left.
Qt::Alignment leading() {
    return QStyle::visualAlignment(QGuiApplication::layoutDirection(), Qt::AlignLeading)
           | Qt::AlignVCenter;
}

} // namespace

DimLabel::DimLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setTextFormat(Qt::PlainText);
    // Otherwise Qt would paint a label on a list in the colour of the texts of lists.
    setForegroundRole(QPalette::WindowText);
    setAlignment(leading());
    adaptColor();
}

void DimLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        adaptColor();
}

void DimLabel::adaptColor() {
    const QColor wanted = textColor::dimmed(palette().color(QPalette::Active, QPalette::Text));
    if (palette().color(QPalette::Active, QPalette::WindowText) == wanted)
        return;
    // Only this colour is set, so that all others still follow the palette of the window.
    QPalette own;
    own.setColor(QPalette::WindowText, wanted);
    setPalette(own);
}

namespace labels {

void scale(QWidget& widget, double factor) {
    QFont font = widget.font();
    font.setPointSizeF(QApplication::font().pointSizeF() * factor);
    widget.setFont(font);
}

QLabel* title(const QString& text, double factor) {
    auto* made = heading(text);
    scale(*made, factor);
    return made;
}

QLabel* heading(const QString& text) {
    auto* made = new QLabel(text);
    made->setTextFormat(Qt::PlainText);
    made->setAlignment(leading());
    made->setFont(fonts::bold(made->font()));
    return made;
}

QFrame* separator() {
    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    line->setForegroundRole(QPalette::Midlight);
    line->setFixedHeight(1);
    return line;
}

DimLabel* note(const QString& text) {
    auto* made = new DimLabel(text);
    made->setWordWrap(true);
    return made;
}

} // namespace labels

} // namespace tidemark
