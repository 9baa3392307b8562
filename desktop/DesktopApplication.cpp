#include "desktop/DesktopApplication.h"

#include <QApplication>

namespace tidemark {

DesktopApplication::DesktopApplication(RecorderPlaces where)
    : recorder(std::move(where)), viewSettings(recorder.preferences()), running(recorder) {}

QCoro::Task<void> DesktopApplication::start(Recorder& recorder) {
    // What fails there, the window shows.
    co_await recorder.model().start();
}

int DesktopApplication::run(const Interruption& interruption) {
    const std::stop_callback quit(interruption.token(), [] {
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    });
    WorkspaceWindow window({.model = recorder.model(),
                            .memory = recorder.memoryHistory(),
                            .viewSettings = viewSettings,
                            .preferences = recorder.preferences(),
                            .sources = sources,
                            .tasks = recorder.tasks()});
    window.show();
    QMetaObject::invokeMethod(
        qApp, [this] { recorder.tasks().start(start(recorder)); }, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

} // namespace tidemark
