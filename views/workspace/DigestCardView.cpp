#include "views/workspace/DigestCardView.h"

#include "core/base/Text.h"
#include "core/growth/DigestText.h"
#include "views/base/CrossButton.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/Symbols.h"
#include "views/base/WrappingLabel.h"

#include <QGridLayout>
#include <QToolButton>
#include <algorithm>

namespace tidemark {

namespace {

/// How many of the new background items have a button; the timeline lists all of them.
constexpr std::size_t mostButtons = 6;
constexpr std::size_t buttonsInRow = 3;

QLabel* lineOf(const QString& text) {
    return new WrappingLabel(text);
}

QString countText(const HistoryDigest::Count& count) {
    return wordsHere(rawValue(count.category)) + QStringLiteral(" ")
           + QString::number(count.events);
}

QString sizeText(const GrowthItem& item) {
    return isolated(shownFolderName(item.path, oneLine(item.name)) + QStringLiteral(" ")
                    + shownText(signedBytes(item.change())))
           + (item.change() > 0 ? QStringLiteral(" ▲") : QStringLiteral(" ▼"));
}

template <class Items, class Text>
QString joinedTexts(const Items& items, Text textOf) {
    QStringList texts;
    for (const auto& item : items)
        texts += textOf(item);
    // Lines may break only between two items.
    for (QString& text : texts)
        text.replace(u' ', QChar(QChar::Nbsp));
    return texts.join(QStringLiteral("\u00A0\u00A0·  "));
}

} // namespace

DigestCardView::DigestCardView(QWidget* parent) : RoundedPanel(parent), period(new DimLabel) {
    auto* close = new CrossButton(tr("Close"));
    close->setFocusPolicy(Qt::StrongFocus);
    auto* head = new QHBoxLayout;
    head->setSpacing(8);
    head->addWidget(labels::heading(wordsHere(HistoryDigest::title)));
    head->addWidget(period, 1);
    head->addWidget(close);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(14, 8, 8, 12);
    column->setSpacing(4);
    column->addLayout(head);
    setAccessibleName(wordsHere(HistoryDigest::title));
    connect(close, &QToolButton::clicked, this, &DigestCardView::closed);
}

void DigestCardView::present(const HistoryDigest& digest) {
    if (shown == digest)
        return;
    shown = digest;
    period->setText(isolated(shownText(digestText::period(digest, Calendar()))));
    delete lines;
    lines = new QWidget;
    grid = new QGridLayout(lines);
    grid->setContentsMargins(0, 0, 8, 0);
    grid->setHorizontalSpacing(14);
    grid->setVerticalSpacing(5);
    grid->setColumnStretch(1, 1);
    static_cast<QVBoxLayout*>(layout())->addWidget(lines);
    showLines(digest);
}

void DigestCardView::showLines(const HistoryDigest& digest) {
    if (!digest.counts.empty())
        addLine(tr("Events"), lineOf(joinedTexts(digest.counts, countText)));
    if (!digest.largest.empty()) {
        auto* row = new QWidget;
        auto* line = new QHBoxLayout(row);
        line->setContentsMargins(0, 0, 0, 0);
        line->addWidget(lineOf(joinedTexts(digest.largest, sizeText)), 1);
        auto* more = new QToolButton;
        more->setAutoRaise(true);
        more->setFocusPolicy(Qt::StrongFocus);
        more->setText(wordsHere(GrowthReport::title) + QStringLiteral("…"));
        connect(more, &QToolButton::clicked, this, &DigestCardView::growthRequested);
        line->addWidget(more);
        addLine(tr("Largest changes"), row, Qt::AlignVCenter);
    }
    if (!digest.freeSpace.empty())
        addLine(tr("Free space"), lineOf(shownText(digest.freeSpace)));
    if (!digest.background.empty())
        addLine(tr("New background items"), backgroundButtons(digest), Qt::AlignVCenter);
    if (const auto gaps = digestText::gaps(digest); !gaps.empty())
        addLine(tr("Not observed"), lineOf(shownText(gaps)));
}

void DigestCardView::addLine(const QString& heading, QWidget* content, Qt::Alignment alignment) {
    const int row = grid->rowCount();
    grid->addWidget(new DimLabel(heading), row, 0, alignment);
    grid->addWidget(content, row, 1);
}

QWidget* DigestCardView::backgroundButtons(const HistoryDigest& digest) {
    auto* all = new QWidget;
    auto* places = new QGridLayout(all);
    places->setContentsMargins(0, 0, 0, 0);
    places->setSpacing(2);
    const std::size_t count = std::min(digest.background.size(), mostButtons);
    for (std::size_t i = 0; i < count; ++i) {
        const auto& item = digest.background[i];
        auto* button = new QToolButton;
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setText(isolated(QString::fromStdString(oneLine(item.name))));
        button->setIcon(symbolIcon("gearshape.2"));
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        connect(button, &QToolButton::clicked, this,
                [this, event = item.event] { Q_EMIT eventChosen(event); });
        places->addWidget(button, static_cast<int>(i / buttonsInRow),
                          static_cast<int>(i % buttonsInRow), Qt::AlignLeading);
    }
    places->setColumnStretch(static_cast<int>(buttonsInRow), 1);
    if (digest.background.size() > count)
        places->addWidget(new DimLabel(tr("and %1 more").arg(digest.background.size() - count)),
                          static_cast<int>(count / buttonsInRow), 0, 1,
                          static_cast<int>(buttonsInRow));
    return all;
}

} // namespace tidemark
