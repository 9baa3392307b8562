#include "views/base/TintedSymbol.h"

#include "views/base/Symbols.h"

#include <QPaintDevice>
#include <QPainter>
#include <QPixmapCache>
#include <algorithm>
#include <cmath>

namespace tidemark {

namespace {

/// Icon themes draw the icons of toolbars, which have this size, with lines and in one colour; the
/// larger ones are pictures.
constexpr int lineIcon = 22;
/// The largest scale of that size that the themes have.
constexpr int largestScale = 3;

/// The image drawn with lines, at least as large as `pixels` where the theme has that.
QImage lineImage(std::string_view symbol, int pixels) {
    const QIcon icon = symbolIcon(symbol);
    if (icon.isNull())
        return {};
    const int scale = std::clamp((pixels + lineIcon - 1) / lineIcon, 1, largestScale);
    QPixmap drawn = icon.pixmap(QSize(lineIcon, lineIcon), scale);
    drawn.setDevicePixelRatio(1);
    return drawn.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QPixmap made(std::string_view symbol, int pixels, const QColor& color) {
    QImage image = lineImage(symbol, pixels);
    if (image.isNull())
        return {};
    if (image.width() != pixels)
        image = image.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    painter.end();
    return QPixmap::fromImage(image);
}

} // namespace

QPixmap tintedSymbol(std::string_view symbol, int side, const QColor& color, double ratio) {
    const int pixels = static_cast<int>(std::lround(side * ratio));
    const QString key =
        QStringLiteral("tidemark/%1/%2/%3/%4")
            .arg(QIcon::themeName(),
                 QLatin1String(symbol.data(), static_cast<qsizetype>(symbol.size())))
            .arg(pixels)
            .arg(color.rgba());
    QPixmap found;
    if (!QPixmapCache::find(key, &found)) {
        found = made(symbol, pixels, color);
        QPixmapCache::insert(key, found);
    }
    found.setDevicePixelRatio(ratio);
    return found;
}

void paintSymbol(QPainter& painter, const QRect& area, std::string_view symbol,
                 const QColor& color) {
    const int side = std::min(area.width(), area.height());
    const QPixmap image = tintedSymbol(symbol, side, color, painter.device()->devicePixelRatioF());
    QRect place(QPoint(), QSize(side, side));
    place.moveCenter(area.center());
    painter.drawPixmap(place, image);
}

} // namespace tidemark
