#include "views/base/ControlStyle.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>
#include <algorithm>

namespace tidemark {

namespace {

/// Pixels on each side of the text of a button.
constexpr int textMargin = 12;
constexpr int iconSpacing = 4;
/// Pixels around the buttons of a toolbar.
constexpr int toolbarMargin = 6;
constexpr float frameStrength = 0.45F;

class RoomyButtons : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override {
        QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        if (type == CT_PushButton)
            size.setWidth(std::max(size.width(), contents.width() + 2 * textMargin));
        return size;
    }
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override {
        // `setContentsMargins` of the toolbar would only add space below its buttons.
        return metric == PM_ToolBarItemMargin ? toolbarMargin
                                              : QProxyStyle::pixelMetric(metric, option, widget);
    }
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
        const bool isMirroredLabel = element == CE_PushButtonLabel && button
                                     && button->direction == Qt::RightToLeft
                                     && !button->icon.isNull() && !button->text.isEmpty();
        if (isMirroredLabel)
            drawMirroredLabel(*button, *painter);
        else
            QProxyStyle::drawControl(element, option, painter, widget);
    }

private:
    /// Draws the text next to the icon. Qt would align it with the edge of the button instead.
    void drawMirroredLabel(const QStyleOptionButton& button, QPainter& painter) const {
        const bool isEnabled = button.state & State_Enabled;
        const int text = button.fontMetrics.size(Qt::TextShowMnemonic, button.text).width();
        const int icon = button.iconSize.width();
        QRect label(0, 0, text + iconSpacing + icon, button.rect.height());
        label.moveCenter(button.rect.center());
        const QRect image =
            alignedRect(Qt::LeftToRight, Qt::AlignRight | Qt::AlignVCenter, button.iconSize, label);
        button.icon.paint(&painter, image, Qt::AlignCenter,
                          isEnabled ? QIcon::Normal : QIcon::Disabled);
        drawItemText(&painter, label.adjusted(0, 0, -icon - iconSpacing, 0),
                     Qt::AlignCenter | Qt::TextShowMnemonic, button.palette, isEnabled, button.text,
                     QPalette::ButtonText);
    }
};

class FlatStyle final : public RoomyButtons {
public:
    using RoomyButtons::RoomyButtons;

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        if (element != CE_ToolBar)
            return RoomyButtons::drawControl(element, option, painter, widget);
        painter->fillRect(option->rect, option->palette.window());
        QRect line = option->rect;
        line.setTop(line.bottom());
        painter->fillRect(line, option->palette.midlight());
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        RoomyButtons::drawPrimitive(element, option, painter, widget);
        if (element != PE_IndicatorCheckBox)
            return;
        QColor frame = option->palette.color(QPalette::Text);
        frame.setAlphaF(frame.alphaF() * frameStrength);
        painter->setPen(frame);
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    }
};

} // namespace

void useControlStyle() {
    const QString style = QApplication::style()->name();
    if (style == QLatin1String("fusion"))
        QApplication::setStyle(new FlatStyle(style));
    else
        QApplication::setStyle(new RoomyButtons(style));
}

} // namespace tidemark
