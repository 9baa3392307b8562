#include "views/base/WrappingLabel.h"

#include "views/base/ShownText.h"
#include "views/base/WrappingPolicy.h"

namespace tidemark {

namespace {

constexpr qsizetype mostCharactersInLabel = 600;
constexpr qsizetype mostInTip = 4000;

QString cut(const QString& text, qsizetype most) {
    return text.size() <= most ? text : text.left(most) + QStringLiteral("…");
}

} // namespace

WrappingLabel::WrappingLabel(const QString& text, QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setAlignment(Qt::AlignVCenter | wrappingPolicy::leadingEdge());
    wrappingPolicy::apply(*this);
    setWhole(text);
}

void WrappingLabel::setWhole(const QString& text) {
    QString shown = cut(text, mostCharactersInLabel);
    setText(isolated(shown.replace(u'/', QStringLiteral("/\u200B"))));
    setToolTip(text.size() > mostCharactersInLabel ? cut(text, mostInTip) : QString());
}

} // namespace tidemark
