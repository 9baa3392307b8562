#include "views/workspace/MessageBar.h"

#include "views/base/ShownText.h"
#include "views/base/Symbols.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tidemark {

MessageBar::MessageBar(QWidget* parent) : QFrame(parent), column(new QVBoxLayout(this)) {
    column->setContentsMargins(0, 0, 0, 0);
    hide();
}

void MessageBar::present(const std::vector<WorkspaceMessage>& messages) {
    if (messages == shown)
        return;
    shown = messages;
    while (auto* item = column->takeAt(0)) {
        item->widget()->deleteLater();
        delete item;
    }
    for (const auto& message : messages)
        column->addWidget(barOf(message));
    setVisible(!messages.empty());
}

QWidget* MessageBar::barOf(const WorkspaceMessage& message) {
    auto* bar = new QFrame;
    bar->setFrameShape(QFrame::StyledPanel);
    auto* row = new QHBoxLayout(bar);
    auto* icon = new QLabel;
    const int side = fontMetrics().height() * 3 / 2;
    icon->setPixmap(symbolIcon(message.isFailure() ? "exclamationmark.circle" : "clock")
                        .pixmap(QSize(side, side), devicePixelRatioF()));
    row->addWidget(icon, 0, Qt::AlignTop);

    auto* texts = new QVBoxLayout;
    if (message.isFailure()) {
        auto* title = new QLabel(shownText(message.title));
        QFont font = title->font();
        font.setBold(true);
        title->setFont(font);
        texts->addWidget(title);
    }
    auto* text = new QLabel(isolated(shownText(message.text)));
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    texts->addWidget(text);
    row->addLayout(texts, 1);

    if (!message.retryLabel.empty()) {
        auto* button = new QPushButton(shownText(message.retryLabel));
        connect(button, &QPushButton::clicked, this,
                [this, retry = message.retry] { Q_EMIT retryTriggered(retry); });
        row->addWidget(button, 0, Qt::AlignTop);
    }
    return bar;
}

} // namespace tidemark
