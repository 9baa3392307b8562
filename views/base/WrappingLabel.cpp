#include "views/base/WrappingLabel.h"

#include "views/base/ShownText.h"
#include "views/base/WrappingPolicy.h"

namespace tidemark {

namespace {

constexpr qsizetype mostCharactersInLabel = 600;
constexpr qsizetype mostInTip = 4000;

} // namespace

WrappingLabel::WrappingLabel(const QString& text, QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setAlignment(Qt::AlignVCenter | wrappingPolicy::leadingEdge());
    wrappingPolicy::apply(*this);
    setWhole(text);
}

void WrappingLabel::setWhole(const QString& text) {
    QString shown = shortened(text, mostCharactersInLabel);
    setText(isolated(shown.replace(u'/', QStringLiteral("/\u200B"))));
    setToolTip(text.size() > mostCharactersInLabel ? asPlainText(shortened(text, mostInTip))
                                                   : QString());
}

} // namespace tidemark
