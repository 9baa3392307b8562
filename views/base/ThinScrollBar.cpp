#include "views/base/ThinScrollBar.h"

#include <QAbstractScrollArea>
#include <QPainter>
#include <QProxyStyle>
#include <QScrollBar>
#include <QStyleFactory>
#include <QStyleOptionSlider>

namespace tidemark {

namespace {

constexpr int extent = 12;
constexpr int shortestHandle = 32;
constexpr double handleInset = 3.5;

/// Draws only scroll bars: a handle with round ends on the background of the area.
class ThinScrollBarStyle final : public QProxyStyle {
public:
    ThinScrollBarStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override {
        if (metric == PM_ScrollBarExtent)
            return extent;
        if (metric == PM_ScrollBarSliderMin)
            return shortestHandle;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }

    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override {
        const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
        if (control != CC_ScrollBar || !bar)
            return QProxyStyle::subControlRect(control, option, part, widget);
        return partOf(*bar, part);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override {
        const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
        if (control != CC_ScrollBar || !bar)
            return QProxyStyle::drawComplexControl(control, option, painter, widget);
        painter->fillRect(bar->rect, widget->palette().color(widget->backgroundRole()));
        if (bar->maximum == bar->minimum)
            return;
        QColor color = bar->palette.color(QPalette::Text);
        color.setAlphaF(isHeld(*bar) ? 0.55F : 0.28F);
        const QRectF handle = QRectF(partOf(*bar, SC_ScrollBarSlider))
                                  .adjusted(handleInset, handleInset, -handleInset, -handleInset);
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(color);
        const double radius = std::min(handle.width(), handle.height()) / 2;
        painter->drawRoundedRect(handle, radius, radius);
    }

private:
    static bool isHeld(const QStyleOptionSlider& bar) {
        return bar.activeSubControls.testFlag(SC_ScrollBarSlider)
               && bar.state & (State_Sunken | State_MouseOver);
    }

    static QRect partOf(const QStyleOptionSlider& bar, SubControl part) {
        const bool isUpright = bar.orientation == Qt::Vertical;
        const int length = isUpright ? bar.rect.height() : bar.rect.width();
        const qint64 range = static_cast<qint64>(bar.maximum) - bar.minimum;
        const auto wanted = static_cast<int>(qint64{length} * bar.pageStep
                                             / std::max<qint64>(1, range + bar.pageStep));
        const int handle = std::min(length, std::max(shortestHandle, wanted));
        const int start = sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                  length - handle, bar.upsideDown);
        const auto along = [&](int from, int size) {
            return isUpright ? QRect(0, from, bar.rect.width(), size)
                             : QRect(from, 0, size, bar.rect.height());
        };
        switch (part) {
        case SC_ScrollBarSlider:
            return along(start, handle);
        case SC_ScrollBarGroove:
            return bar.rect;
        case SC_ScrollBarSubPage:
            return along(0, start);
        case SC_ScrollBarAddPage:
            return along(start + handle, length - start - handle);
        default:
            return {};
        }
    }
};

ThinScrollBarStyle& thinStyle() {
    static ThinScrollBarStyle style;
    return style;
}

} // namespace

void useThinScrollBars(QAbstractScrollArea& area) {
    for (QScrollBar* bar : {area.verticalScrollBar(), area.horizontalScrollBar()})
        bar->setStyle(&thinStyle());
}

} // namespace tidemark
