#pragma once

#include "platform/linux/GraphicalSessions.h"
#include "platform/linux/X11Connection.h"
#include "tests/support/TemporaryFolder.h"

#include <QProcess>
#include <QString>
#include <memory>
#include <string>
#include <vector>

namespace tidemark::test {

/// A program of the test. Killed at the end of its lifetime.
class ChildProgram {
public:
    ChildProgram() = default;
    ~ChildProgram() { stop(); }

    /// Starts it with `input` as its standard input. The first element is the program.
    void start(const QStringList& command, const QByteArray& input = {});
    /// Asks it to end, and waits until it has.
    void stop();
    /// Waits for its end, and returns its output.
    QByteArray output();

    QProcess process;
};

/// True when all these programs are installed.
bool hasPrograms(const std::vector<const char*>& names);

/// An X11 server without a screen, with a window manager.
class X11Server {
public:
    /// With `display`, on that display.
    explicit X11Server(const std::string& display = {});

    /// Such as ":7".
    const std::string& display() const { return name; }
    /// Runs a program of this display to its end and returns its output.
    QByteArray run(const QStringList& command, const QByteArray& input = {}) const;
    void prepare(ChildProgram& program) const;
    void stop() { server.stop(); }

private:
    ChildProgram server;
    ChildProgram manager;
    std::string name;
};

/// A window of another program.
class X11Window {
public:
    /// `classes` are its two classes, the one of the application last. `type` is the name of a type
    /// of the Extended Window Manager Hints; null for a window without one.
    X11Window(const X11Server& server, const std::vector<std::string>& classes,
              const char* type = nullptr);

private:
    std::unique_ptr<X11Connection> connection;
};

/// Returns when what follows an X11 server has handled all that has happened there until now.
void settleReaders(GraphicalSessions& sessions);

/// The compositor sway without a screen. It refuses to run as root, so it runs as another user
/// then.
class WaylandServer {
public:
    WaylandServer();

    /// The path of its socket.
    const std::string& display() const { return socket; }
    /// Runs a program of this display to its end and returns its output.
    QByteArray run(const QStringList& command, const QByteArray& input = {}) const;
    void prepare(ChildProgram& program) const;
    /// Sends a command to sway.
    void command(const QString& text) const;

private:
    TemporaryFolder folder;
    ChildProgram server;
    std::string socket;
};

} // namespace tidemark::test
