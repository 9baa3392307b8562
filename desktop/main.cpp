#include "app/ports/DesktopServices.h"
#include "core/base/FreeDescriptors.h"
#include "core/base/Text.h"
#include "core/system/ThreadHeaps.h"
#include "desktop/DesktopApplication.h"
#include "desktop/DesktopOptions.h"
#include "desktop/OtherRecorder.h"
#include "recorder/RecorderLog.h"
#include "views/base/ControlStyle.h"
#include "views/base/ShownText.h"
#include "views/base/Translations.h"

#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <thread>

namespace {

using namespace tidemark;

constexpr int failed = 1;
/// What the event loop, the locks, a capture and the connections to the display need.
constexpr int neededDescriptors = 32;
/// How many times the program tries again to lock the data folder, while another recorder leaves it
/// or a command has it for a moment. With the pauses in between, that takes fifteen seconds.
constexpr int folderAttempts = 150;
constexpr std::chrono::milliseconds folderPause{100};

/// The service to start again when this program ends.
std::string& serviceToRestart() {
    static std::string name;
    return name;
}

QString nameOf(const desktopOptions::Option& option) {
    return QStringLiteral("--") + QString::fromLatin1(option.name);
}

void printHelp() {
    std::printf("Tidemark records what changed on this computer, and shows it in a window.\n"
                "Usage: tidemark-desktop [OPTIONS]\n\nOptions:\n");
    for (const auto& [name, help] : desktopOptions::all)
        std::printf("  --%-16s %s\n", name.data(), help.data());
}

/// Carries out an option that needs no window, and returns the exit status.
std::optional<int> answered(std::string_view argument) {
    const auto is = [&](const desktopOptions::Option& option) {
        return argument == "--" + std::string(option.name);
    };
    if (is(desktopOptions::hasDisplay))
        return desktopServices::hasDisplay() ? 0 : failed;
    if (is(desktopOptions::version))
        std::puts("tidemark-desktop " TIDEMARK_VERSION);
    else if (is(desktopOptions::help))
        printHelp();
    else
        return std::nullopt;
    return 0;
}

void complain(const char* sentence) {
    std::fprintf(stderr, "tidemark-desktop: %s\n", oneLine(sentence).c_str());
}

void restartService() {
    desktopServices::startService(serviceToRestart().c_str());
}

/// Has the service started by exit(3), by which Qt ends the process when the display is lost, too,
/// and when the user interrupts the program a second time.
void restartServiceAtExit(const std::string& service) {
    if (service.empty() || !serviceToRestart().empty())
        return;
    serviceToRestart() = service;
    std::atexit(restartService);
    Interruption::callBeforeEndingAtOnce(restartService);
}

/// Null when another program with windows has the folder, whose window is brought forward then.
std::unique_ptr<DesktopApplication> takeFolder(const RecorderPlaces& places) {
    for (int attempt = 0;; ++attempt) {
        const auto other = OtherRecorder::ask(places);
        if (other.hasWindow)
            return nullptr;
        restartServiceAtExit(other.service);
        try {
            return std::make_unique<DesktopApplication>(places);
        } catch (const FolderTaken&) {
            if (attempt == folderAttempts)
                throw;
        }
        std::this_thread::sleep_for(folderPause);
    }
}

int record(const Interruption& interruption) {
    const auto application = takeFolder(RecorderPlaces::current());
    const bool inBackground =
        QCoreApplication::arguments().contains(nameOf(desktopOptions::background));
    return application ? application->run(interruption, inBackground) : 0;
}

int run(int count, char** arguments) {
    const Interruption interruption(Interruption::AfterStop::ends);
    requireFreeDescriptors(neededDescriptors);
    QApplication application(count, arguments);
    QApplication::setApplicationDisplayName(QStringLiteral("Tidemark"));
    QApplication::setApplicationVersion(QStringLiteral(TIDEMARK_VERSION));
    // Flatpak gives the desktop entry another name.
    QGuiApplication::setDesktopFileName(
        qEnvironmentVariable("FLATPAK_ID", QStringLiteral("app.tidemark")));
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("app.tidemark")));
    loadTranslations(application);
    useControlStyle();
    recorderLog::start();
    try {
        return record(interruption);
    } catch (const std::exception& error) {
        // Whoever started it from a menu sees no standard error.
        QMessageBox::critical(nullptr, QStringLiteral("Tidemark"),
                              asPlainText(shownText(error.what())));
        throw;
    }
}

} // namespace

int main(int argc, char** argv) {
    limitThreadHeaps();
    desktopServices::ignoreRemoteDisplay();
    for (const char* argument : std::span(argv, static_cast<std::size_t>(argc)).subspan(1))
        if (const auto status = answered(argument))
            return *status;
    if (!desktopServices::hasDisplay()) {
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
