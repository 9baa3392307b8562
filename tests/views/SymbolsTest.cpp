#include "views/base/Symbols.h"

#include "views/base/TintedSymbol.h"

#include <QIcon>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

/// The share of the pixels that something is drawn on.
double ink(const QPixmap& picture) {
    const QImage image = picture.toImage();
    int drawn = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            drawn += qAlpha(image.pixel(x, y)) > 64 ? 1 : 0;
    return image.isNull() ? 0 : static_cast<double>(drawn) / (image.width() * image.height());
}

} // namespace

TEST(Symbols, AreDrawnInBothThemesAndInTheColourThatIsAskedFor) {
    for (const char* theme : {"breeze", "breeze-dark"}) {
        QIcon::setThemeName(QLatin1String(theme));
        for (const auto symbol : knownSymbols()) {
            SCOPED_TRACE(std::string(theme) + " " + std::string(symbol));
            for (const double ratio : {1.0, 2.0}) {
                const QPixmap picture = tintedSymbol(symbol, 22, Qt::white, ratio);
                EXPECT_GT(ink(picture), 0.02);
                EXPECT_LT(ink(picture), 0.8);
                EXPECT_EQ(picture.width(), 22 * static_cast<int>(ratio));
            }
        }
    }
    const QImage red = tintedSymbol("folder", 22, Qt::red, 1).toImage();
    for (int y = 0; y < red.height(); ++y)
        for (int x = 0; x < red.width(); ++x)
            ASSERT_TRUE(qAlpha(red.pixel(x, y)) < 250 || red.pixelColor(x, y) == Qt::red);
    EXPECT_TRUE(tintedSymbol("no such symbol", 22, Qt::red, 1).isNull());
}
