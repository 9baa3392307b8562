#include "views/workspace/InspectorView.h"

#include "core/base/Characters.h"
#include "views/base/CrossButton.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/ThinScrollBar.h"
#include "views/base/TintedSymbol.h"
#include "views/base/WrappingPolicy.h"
#include "views/workspace/InspectionSectionView.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace tidemark {

namespace {

constexpr int inspectorMargin = 20;
constexpr int inspectorSymbolSide = 33;
/// The limit of the title and of the line below it: a title can be the text of a clip.
constexpr std::size_t mostCharacters = 300;

QString headText(const std::string& text) {
    const auto all = QString::fromStdString(text).simplified().toStdString();
    const auto start = firstCharacters(all, mostCharacters);
    return isolated(QString::fromUtf8(start.data(), static_cast<qsizetype>(start.size()))
                    + (start.size() < all.size() ? QStringLiteral("…") : QString()));
}

/// Sets up a label of the head: its text can be selected, wraps, and may be wider than the label.
template <class Label>
Label* wrappedInHead(Label* label) {
    label->setAlignment(Qt::AlignTop | wrappingPolicy::leadingEdge());
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    wrappingPolicy::apply(*label);
    return label;
}

} // namespace

InspectorView::InspectorView(QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(shownText(EventInspection::heading));
    viewport()->setBackgroundRole(QPalette::Window);
    useThinScrollBars(*this);
    present(std::nullopt);
}

void InspectorView::present(const std::optional<EventInspection>& inspection) {
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(inspectorMargin, inspectorMargin, inspectorMargin, inspectorMargin);
    column->setSpacing(18);
    if (!inspection) {
        addPlaceholder(*column);
    } else {
        addHead(*column, *inspection);
        for (const auto& section : inspection->sections)
            column->addWidget(new InspectionSectionView(section));
        addActions(*column, *inspection);
        column->addStretch();
    }
    setWidget(content);
}

void InspectorView::addPlaceholder(QVBoxLayout& column) {
    auto* text = labels::note(isolated(wordsHere(EventInspection::placeholder)));
    text->setAlignment(Qt::AlignHCenter);
    column.addStretch(2);
    column.addWidget(text);
    column.addStretch(3);
}

void InspectorView::addHead(QVBoxLayout& column, const EventInspection& inspection) {
    auto* symbol = new QLabel;
    symbol->setPixmap(tintedSymbol(inspection.symbol, inspectorSymbolSide,
                                   palette().color(QPalette::Text), devicePixelRatioF()));
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(wrappedInHead(labels::title(headText(inspection.title), 1.25)));
    if (!inspection.subtitle.empty())
        texts->addWidget(wrappedInHead(labels::note(headText(inspection.subtitle))));
    auto* close = new CrossButton(wordsHere(EventInspection::closeDetails));
    connect(close, &QToolButton::clicked, this, &InspectorView::closed);

    auto* about = labels::note(wordsHere(EventInspection::heading));
    labels::scale(*about, 0.93);
    auto* bar = new QHBoxLayout;
    bar->addWidget(about, 1);
    bar->addWidget(close);
    auto* head = new QHBoxLayout;
    head->setSpacing(14);
    head->addWidget(symbol, 0, Qt::AlignTop);
    head->addLayout(texts, 1);
    column.addLayout(bar);
    column.addLayout(head);
}

void InspectorView::addActions(QVBoxLayout& column, const EventInspection& inspection) {
    auto* buttons = new QVBoxLayout;
    buttons->setSpacing(6);
    for (const auto& [command, words] : inspection.actions) {
        auto* button = new QPushButton(shownText(words));
        connect(button, &QPushButton::clicked, this,
                [this, command = command] { Q_EMIT actionTriggered(command); });
        buttons->addWidget(button, 0, Qt::AlignLeading);
    }
    column.addLayout(buttons);
}

} // namespace tidemark
