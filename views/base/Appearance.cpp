#include "views/base/Appearance.h"

#include "views/base/Palettes.h"

#include <QApplication>
#include <QEvent>
#include <QIcon>

namespace tidemark {

namespace {

const QString lightIcons = QStringLiteral("breeze");
const QString darkIcons = QStringLiteral("breeze-dark");

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness()
           < palette.color(QPalette::WindowText).lightness();
}

QPalette paletteFor(bool dark, bool highContrast) {
    if (highContrast)
        return dark ? palettes::darkHighContrast() : palettes::lightHighContrast();
    return dark ? palettes::dark() : palettes::light();
}

} // namespace

Appearance::Appearance(const ViewSettings& used) : settings(used) {
    qApp->installEventFilter(this);
    connect(&settings, &ViewSettings::changed, this, &Appearance::apply);
    apply();
}

void Appearance::setSystem(const SystemAppearance& appearance) {
    system = appearance;
    apply();
}

void Appearance::apply() {
    std::optional<bool> wanted = system.isDark;
    settings.applyAppearance([&](std::optional<ViewSettings::Appearance> chosen) {
        if (chosen)
            wanted = *chosen == ViewSettings::Appearance::dark;
    });
    if (!isOfDesktop) {
        // An empty palette makes Qt use that of the desktop again.
        QApplication::setPalette(QPalette());
        isOfDesktop = true;
    }
    const bool isDesktopDark = isDark(QApplication::palette());
    const bool isWantedDark = wanted.value_or(isDesktopDark);
    if (isWantedDark != isDesktopDark || system.hasHighContrast) {
        QApplication::setPalette(paletteFor(isWantedDark, system.hasHighContrast));
        isOfDesktop = false;
    }
    chooseIcons();
}

void Appearance::chooseIcons() {
    const QString wanted = isDark(QApplication::palette()) ? darkIcons : lightIcons;
    if (QIcon::fallbackThemeName() == wanted)
        return;
    // Without a fallback, `hasThemeIcon` finds only icons of the theme that the desktop names.
    QIcon::setFallbackThemeName({});
    const QString theme = QIcon::themeName();
    const bool hasIcons = theme != lightIcons && theme != darkIcons
                          && QIcon::hasThemeIcon(QStringLiteral("view-refresh"));
    QIcon::setFallbackThemeName(wanted);
    // Qt draws existing icons anew only when the name of the theme changes.
    QIcon::setThemeName({});
    QIcon::setThemeName(hasIcons ? theme : wanted);
}

bool Appearance::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange)
        chooseIcons();
    return QObject::eventFilter(watched, event);
}

} // namespace tidemark
