#include "demo/DemoWindows.h"
#include "demo/Screenshots.h"
#include "views/base/ControlStyle.h"
#include "views/base/Translations.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryDir>
#include <cstdio>

namespace {

using namespace tidemark;

constexpr int failed = 1;

QCoro::Task<void> open(demo::DemoRecorder& recorder) {
    co_await recorder.open();
}

int showDemo() {
    const QTemporaryDir folder;
    const Date now = demo::MadeUpHistory::endOfDay(Date::now());
    demo::DemoRecorder recorder(folder.path().toStdString(), demo::MadeUpHistory::endingAt(now),
                                now);
    const Appearance appearance(recorder.uses().viewSettings);
    demo::DemoWindows windows(recorder);
    windows.workspace().setWindowTitle(
        QStringLiteral("Tidemark: a made-up history, nothing is recorded"));
    windows.workspace().show();
    const auto opening = open(recorder);
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    loadTranslations(application);
    useControlStyle();
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows the window of Tidemark over a made-up history."));
    parser.addHelpOption();
    const QCommandLineOption pictures(QStringLiteral("screenshots"),
                                      QStringLiteral("Write pictures of every screen."),
                                      QStringLiteral("folder"));
    const QCommandLineOption only(
        QStringLiteral("only"),
        QStringLiteral("Only the picture with this name; may be given again."),
        QStringLiteral("name"));
    parser.addOption(pictures);
    parser.addOption(only);
    parser.process(application);
    try {
        if (!parser.isSet(pictures))
            return showDemo();
        demo::takeScreenshots(parser.value(pictures), parser.values(only));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tidemark-demo: %s\n", error.what());
    }
    return failed;
}
