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

/// A program that a test runs. Calls `stop` at the end of its lifetime.
class ChildProgram {
public:
    ChildProgram() = default;
    ~ChildProgram() { stop(); }

    /// Starts it with `input` as its standard input. The first element is the program.
    void start(const QStringList& command, const QByteArray& input = {});
    /// Asks it to end, and waits until it has, at most 30 seconds.
    void stop();
    /// Waits for its end, and returns its output.
    QByteArray output();

    QProcess process;
};

/// True when all these programs are installed.
bool hasPrograms(const std::vector<const char*>& names);

/// An X11 server that draws into memory only, with a window manager.
class X11Server {
public:
    /// Starts it on this display, such as ":7"; on a free one if the text is empty.
    explicit X11Server(const std::string& display = {});

    /// Its display, such as ":7".
    const std::string& display() const { return name; }
    /// Runs a program on this display, waits until it ends, and returns its output.
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

/// Returns when the readers of these sessions have handled all that has happened on the X11 server
/// until now.
void settleReaders(GraphicalSessions& sessions);

/// The compositor sway without a monitor. It refuses to run as root, so a test that runs as root
/// starts it as another user.
class WaylandServer {
public:
    WaylandServer();

    /// The path of its socket.
    const std::string& display() const { return socket; }
    /// Runs a program on this display, waits until it ends, and returns its output.
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
