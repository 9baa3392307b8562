#include "views/workspace/EmptyStateView.h"

#include "views/base/ShownText.h"
#include "views/base/Symbols.h"
#include "views/base/TextColor.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tidemark {

namespace {

constexpr int symbolSide = 64;
constexpr int widestSentence = 420;

} // namespace

EmptyStateView::EmptyStateView(QWidget* parent)
    : QWidget(parent), symbol(new QLabel), title(new QLabel), explanation(new QLabel),
      button(new QPushButton) {
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    QFont font = title->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.3);
    title->setFont(font);
    title->setWordWrap(true);
    title->setAlignment(Qt::AlignHCenter);
    title->setFixedWidth(widestSentence);
    explanation->setWordWrap(true);
    explanation->setAlignment(Qt::AlignHCenter);
    explanation->setFixedWidth(widestSentence);
    textColor::dim(*explanation);
    auto* column = new QVBoxLayout(this);
    column->addStretch();
    for (QWidget* widget : std::initializer_list<QWidget*>{symbol, title, explanation, button})
        column->addWidget(widget, 0, Qt::AlignHCenter);
    column->addStretch();
    connect(button, &QPushButton::clicked, this, [this] { Q_EMIT actionTriggered(shown.action); });
}

void EmptyStateView::present(const EmptyState& state) {
    shown = state;
    symbol->setPixmap(
        symbolIcon(state.symbol)
            .pixmap(QSize(symbolSide, symbolSide), devicePixelRatioF(), QIcon::Disabled));
    title->setText(shownText(state.title));
    explanation->setText(shownText(state.explanation));
    button->setText(shownText(state.actionLabel));
    button->setVisible(!state.actionLabel.empty());
}

} // namespace tidemark
