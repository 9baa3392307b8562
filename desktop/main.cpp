#include "desktop/DesktopApplication.h"
#include "recorder/RecorderLog.h"

#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace tidemark;

constexpr int failed = 1;
/// What the event loop, the locks, a capture and the connections to the display need.
constexpr int neededDescriptors = 32;

/// Qt ends the process with several lines of its own when it finds no display.
bool mayHaveDisplay() {
    constexpr std::array variables{"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    return std::ranges::any_of(variables, [](const char* name) {
        const char* value = std::getenv(name);
        return value && *value != '\0';
    });
}

void complain(const char* sentence) {
    std::fprintf(stderr, "tidemark-desktop: %s\n", sentence);
}

/// Without a desktop that names one, there is no theme that any icon could come from.
void chooseIcons() {
    if (!QIcon::hasThemeIcon(QStringLiteral("view-refresh")))
        QIcon::setThemeName(QStringLiteral("breeze"));
    QIcon::setFallbackThemeName(QStringLiteral("breeze"));
}

int run(int count, char** arguments) {
    const Interruption interruption(Interruption::AfterStop::ends);
    requireFreeDescriptors(neededDescriptors);
    QApplication application(count, arguments);
    QApplication::setApplicationDisplayName(QStringLiteral("Tidemark"));
    QApplication::setApplicationVersion(QStringLiteral(TIDEMARK_VERSION));
    chooseIcons();
    recorderLog::start();
    try {
        return DesktopApplication(RecorderPlaces::current()).run(interruption);
    } catch (const FolderTaken& error) {
        // Whoever started it from a menu sees no standard error.
        QMessageBox::critical(nullptr, QStringLiteral("Tidemark"), QString::fromUtf8(error.what()));
        throw;
    }
}

} // namespace

int main(int argc, char** argv) {
    if (!mayHaveDisplay()) {
        complain("There is no display to open a window on; tidemark run records without one.");
        return failed;
    }
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        complain(error.what());
    }
    return failed;
}
