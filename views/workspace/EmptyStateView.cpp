#include "views/workspace/EmptyStateView.h"

#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/TextColor.h"
#include "views/base/TintedSymbol.h"

#include <QEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace tidemark {

namespace {

constexpr int symbolSide = 66;
constexpr int widestSentence = 400;
constexpr float symbolStrength = 0.4F;

} // namespace

EmptyStateView::EmptyStateView(QWidget* parent)
    : QWidget(parent), symbol(new QLabel), title(labels::title({}, 1.25)),
      explanation(labels::note({})), button(new QPushButton) {
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    for (QLabel* label : {title, static_cast<QLabel*>(explanation)}) {
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignHCenter);
        label->setFixedWidth(widestSentence);
    }
    setFocusProxy(button);
    auto* column = new QVBoxLayout(this);
    column->setSpacing(10);
    column->addStretch(2);
    for (QWidget* widget : std::initializer_list<QWidget*>{symbol, title, explanation})
        column->addWidget(widget, 0, Qt::AlignHCenter);
    column->addSpacing(8);
    column->addWidget(button, 0, Qt::AlignHCenter);
    column->addStretch(3);
    connect(button, &QPushButton::clicked, this, [this] { Q_EMIT actionTriggered(shown.action); });
}

void EmptyStateView::present(const EmptyState& state) {
    if (state == shown)
        return;
    shown = state;
    drawSymbol();
    title->setText(shownText(state.title));
    explanation->setText(shownText(state.explanation));
    fitHeights();
    button->setText(shownText(state.actionLabel));
    button->setEnabled(state.isActionEnabled);
    button->setVisible(!state.actionLabel.empty());
}

void EmptyStateView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        drawSymbol();
    if (event->type() == QEvent::FontChange)
        fitHeights();
}

void EmptyStateView::fitHeights() {
    for (QLabel* label : {title, static_cast<QLabel*>(explanation)})
        label->setFixedHeight(label->heightForWidth(widestSentence));
}

void EmptyStateView::drawSymbol() {
    QColor color = palette().color(QPalette::Text);
    color.setAlphaF(symbolStrength);
    symbol->setPixmap(tintedSymbol(shown.symbol, symbolSide, color, devicePixelRatioF()));
}

} // namespace tidemark
