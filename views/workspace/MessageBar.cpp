#include "views/workspace/MessageBar.h"

#include "views/base/CrossButton.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/Symbols.h"
#include "views/base/WrappingLabel.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace tidemark {

namespace {

constexpr int stripeWidth = 3;
constexpr float tintStrength = 0.10F;

/// A message on a faint tint of the accent colour, with a stripe of the full colour at the leading
/// edge.
class MessageFrame final : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        QColor tint = palette().color(QPalette::Highlight);
        QRect stripe(0, 0, stripeWidth, height());
        painter.fillRect(QStyle::visualRect(layoutDirection(), rect(), stripe), tint);
        tint.setAlphaF(tintStrength);
        painter.fillRect(rect(), tint);
    }
};

} // namespace

MessageBar::MessageBar(QWidget* parent) : QFrame(parent), column(new QVBoxLayout(this)) {
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(1);
    hide();
}

void MessageBar::present(const std::vector<WorkspaceMessage>& messages) {
    if (messages == shown)
        return;
    shown = messages;
    while (auto* item = column->takeAt(0)) {
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
    for (const auto& message : messages)
        column->addWidget(barOf(message));
    setVisible(!messages.empty());
}

QWidget* MessageBar::barOf(const WorkspaceMessage& message) {
    auto* bar = new MessageFrame;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(20, 10, 12, 10);
    row->setSpacing(12);
    auto* icon = new QLabel;
    const int side = fontMetrics().height() + 6;
    icon->setPixmap(symbolIcon(message.isFailure() ? "warning" : "clock")
                        .pixmap(QSize(side, side), devicePixelRatioF()));
    row->addWidget(icon, 0, Qt::AlignTop);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    if (message.isFailure())
        texts->addWidget(labels::heading(shownText(message.title)));
    texts->addWidget(new WrappingLabel(shownText(message.text)));
    row->addLayout(texts, 1);

    if (!message.retryLabel.empty()) {
        auto* button = new QPushButton(shownText(message.retryLabel));
        connect(button, &QPushButton::clicked, this,
                [this, retry = message.retry] { Q_EMIT retryTriggered(retry); });
        row->addWidget(button, 0, Qt::AlignVCenter);
    }
    if (!message.isFailure()) {
        auto* close = new CrossButton(tr("Close this message"));
        connect(close, &QToolButton::clicked, this, &MessageBar::noticeClosed);
        row->addWidget(close, 0, Qt::AlignVCenter);
    }
    return bar;
}

} // namespace tidemark
