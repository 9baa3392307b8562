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
        // What it would be without this program.
        QApplication::setPalette(QPalette());
        isOfDesktop = true;
    }
    const bool isFitting =
        wanted.value_or(isDark(QApplication::palette())) == isDark(QApplication::palette())
        && !system.hasHighContrast;
    if (!isFitting) {
        QApplication::setPalette(
            paletteFor(wanted.value_or(isDark(QApplication::palette())), system.hasHighContrast));
        isOfDesktop = false;
    }
    chooseIcons();
}

void Appearance::chooseIcons() {
    const QString wanted = isDark(QApplication::palette()) ? darkIcons : lightIcons;
    if (QIcon::fallbackThemeName() == wanted)
        return;
    // Without the fallback it shows whether the desktop names a theme that has icons.
    QIcon::setFallbackThemeName({});
    const QString theme = QIcon::themeName();
    const bool hasIcons = theme != lightIcons && theme != darkIcons
                          && QIcon::hasThemeIcon(QStringLiteral("view-refresh"));
    QIcon::setFallbackThemeName(wanted);
    // Icons that were drawn before are only drawn anew for a theme of another name.
    QIcon::setThemeName({});
    QIcon::setThemeName(hasIcons ? theme : wanted);
}

bool Appearance::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange)
        chooseIcons();
    return QObject::eventFilter(watched, event);
}

} // namespace tidemark
