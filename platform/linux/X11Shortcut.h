#pragma once

#include "app/ports/GlobalShortcut.h"
#include "core/base/FileDescriptor.h"

#include <QObject>
#include <thread>

namespace tidemark {

/// A passive grab of Control–Shift–Space on the root windows of the X display (XGrabKey(3)), on a
/// connection and a thread of its own. The first program that grabs keys has them; for the others
/// they are not available.
class X11Shortcut final : public GlobalShortcut {
public:
    explicit X11Shortcut(Observer observer);
    ~X11Shortcut() override;

private:
    void follow();
    void report(Availability availability);
    void press();

    const Observer observer;
    /// Readable when the thread is to end.
    FileDescriptor ending;
    /// Receives the calls of the thread; those that are left are dropped with it.
    QObject receiver;
    std::thread thread;
};

} // namespace tidemark
