#include "desktop/DesktopApplication.h"

#include <QApplication>

namespace tidemark {

DesktopApplication::DesktopApplication(const RecorderPlaces& where)
    : recorder(where, Recorder::Windows::some), running(recorder) {}

DesktopApplication::~DesktopApplication() = default;

QCoro::Task<void> DesktopApplication::start(Recorder& recorder) {
    // The window shows what fails during the start.
    co_await recorder.model().start();
}

int DesktopApplication::run(const Interruption& interruption, bool inBackground) {
    const std::stop_callback quit(interruption.token(), [] {
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    });
    DesktopWindows windows(recorder);
    if (!inBackground)
        windows.showWindow();
    QMetaObject::invokeMethod(
        qApp, [this] { recorder.tasks().start(start(recorder)); }, Qt::QueuedConnection);
    const int status = QCoreApplication::exec();
    recorder.requests() = {};
    return status;
}

} // namespace tidemark
