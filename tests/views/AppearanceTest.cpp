#include "views/base/Appearance.h"

#include "tests/app/support/Await.h"
#include "tests/app/support/MemoryPreferences.h"

#include <QApplication>
#include <QIcon>

#include <gtest/gtest.h>

using namespace tidemark;

TEST(Appearance, FollowsTheChoiceOfTheUserOrElseTheDesktop) {
    const struct {
        const char* mode;
        SystemAppearance system;
        bool isDark;
        bool isBlackAndWhite;
    } cases[] = {
        {"system", {.isDark = true}, true, false},
        {"light", {.isDark = true}, false, false},
        {"system", {.isDark = false}, false, false},
        {"dark", {.isDark = false}, true, false},
        {"dark", {.hasHighContrast = true}, true, true},
        {"light", {.isDark = true, .hasHighContrast = true}, false, true},
        {"system", {}, false, false},
    };
    test::MemoryPreferences preferences;
    const ViewSettings settings(preferences);
    Appearance appearance(settings);
    for (const auto& [mode, system, isDark, isBlackAndWhite] : cases) {
        preferences.set("appearanceMode", std::string(mode));
        appearance.setSystem(system);
        test::settle();
        const QPalette palette = QApplication::palette();
        const QColor window = palette.color(QPalette::Window);
        EXPECT_EQ(window.lightness() < 128, isDark) << mode;
        EXPECT_EQ(window == Qt::black || window == Qt::white, isBlackAndWhite) << mode;
        EXPECT_EQ(QIcon::themeName() == QStringLiteral("breeze-dark"), isDark) << mode;
    }
}
