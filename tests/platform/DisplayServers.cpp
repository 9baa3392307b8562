#include "tests/platform/DisplayServers.h"

#include "app/base/MainThreadCalls.h"
#include "platform/linux/WaylandConnection.h"
#include "tests/app/support/Await.h"

#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QTimer>
#include <algorithm>
#include <stdexcept>

#include <signal.h>
#include <unistd.h>

namespace tidemark::test {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

namespace {

void setVariable(QProcess& process, const QString& name, const std::string& value) {
    auto environment = process.processEnvironment();
    if (environment.isEmpty())
        environment = QProcessEnvironment::systemEnvironment();
    environment.insert(name, QString::fromStdString(value));
    process.setProcessEnvironment(environment);
}

/// Handles events until something outside of this process has happened.
template <class Condition>
void untilOutside(const Condition& condition) {
    QTimer look;
    look.start(5);
    until(condition);
}

/// Returns when the window manager takes care of windows: while it starts, it may lose the request
/// to show one.
void untilManaged(X11Connection& connection) {
    auto* raw = connection.raw();
    const auto window = xcb_generate_id(raw);
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, window, connection.root(), 0, 0, 9, 9, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    const auto list = connection.atom("_NET_CLIENT_LIST");
    const auto isListed = [&] {
        return !connection.property(connection.root(), list).numbers().empty();
    };
    untilOutside([&] {
        xcb_map_window(raw, window);
        return isListed();
    });
    xcb_destroy_window(raw, window);
    untilOutside([&] { return !isListed(); });
}

} // namespace

bool hasPrograms(const std::vector<const char*>& names) {
    return std::ranges::all_of(names, [](const char* name) {
        return !QStandardPaths::findExecutable(QLatin1String(name)).isEmpty();
    });
}

void ChildProgram::start(const QStringList& command, const QByteArray& input) {
    process.start(command[0], command.mid(1));
    if (!process.waitForStarted())
        throw std::runtime_error("not started: " + command[0].toStdString());
    process.write(input);
    process.closeWriteChannel();
}

void ChildProgram::stop() {
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    process.waitForFinished();
}

QByteArray ChildProgram::output() {
    until([&] { return process.state() == QProcess::NotRunning; });
    return process.readAllStandardOutput();
}

X11Server::X11Server(const std::string& display) : name(display) {
    server.process.setStandardErrorFile(QProcess::nullDevice());
    QStringList command{u"Xvfb"_s};
    if (!display.empty())
        command << QString::fromStdString(display);
    command << u"-displayfd"_s << u"1"_s << u"-screen"_s << u"0"_s << u"640x480x24"_s
            << u"-nolisten"_s << u"tcp"_s;
    server.start(command);
    while (!server.process.canReadLine())
        if (!server.process.waitForReadyRead())
            throw std::runtime_error("no Xvfb");
    name = ":" + server.process.readLine().trimmed().toStdString();
    prepare(manager);
    manager.process.setStandardErrorFile(QProcess::nullDevice());
    manager.start({u"openbox"_s, u"--sm-disable"_s});
    untilManaged(*X11Connection::open(name, [] {}));
}

void X11Server::prepare(ChildProgram& program) const {
    setVariable(program.process, u"DISPLAY"_s, name);
}

QByteArray X11Server::run(const QStringList& command, const QByteArray& input) const {
    ChildProgram program;
    prepare(program);
    program.start(command, input);
    return program.output();
}

X11Window::X11Window(const X11Server& server, const std::vector<std::string>& classes,
                     const char* type)
    : connection(X11Connection::open(server.display(), [] {})) {
    auto* raw = connection->raw();
    const auto window = xcb_generate_id(raw);
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, window, connection->root(), 0, 0, 9, 9, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    std::string value;
    for (const auto& name : classes)
        value += name + '\0';
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(value.size()), value.data());
    if (type != nullptr) {
        const auto atom = connection->atom(type);
        xcb_change_property(raw, XCB_PROP_MODE_REPLACE, window,
                            connection->atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &atom);
    }
    xcb_map_window(raw, window);
    xcb_flush(raw);
}

void settleReaders(GraphicalSessions& sessions) {
    const MainThreadCalls calls;
    bool isHandled = false;
    const auto ask = [&, post = calls.post()](X11Connection& connection) {
        // The reply to this request arrives after all events until now. The connection handles
        // these before its thread runs the timer.
        connection.property(connection.root(), XCB_ATOM_WM_NAME);
        connection.after(std::chrono::milliseconds(0), &connection,
                         [post, &isHandled] { post([&] { isHandled = true; }); });
        return std::unique_ptr<DisplayReader>();
    };
    const auto reader = sessions.x11()->add({ask, [] {}});
    until([&] { return isHandled; });
}

WaylandServer::WaylandServer() {
    const auto run = folder.makeFolder("run");
    folder.write("config", "xwayland disable\n");
    fs::permissions(folder.path(), fs::perms(0755));
    fs::permissions(run, fs::perms(0700));
    QStringList command;
    if (::geteuid() == 0) {
        if (::chown(run.c_str(), 65534, 65534) != 0)
            throw std::runtime_error("no folder for sway");
        command << u"setpriv"_s << u"--reuid=65534"_s << u"--regid=65534"_s << u"--clear-groups"_s;
    }
    command << u"sway"_s << u"-c"_s << QString::fromStdString((folder / "config").native());
    for (const auto& [variable, value] :
         {std::pair("XDG_RUNTIME_DIR", run.native()), std::pair("HOME", run.native()),
          std::pair("SWAYSOCK", (run / "ipc").native()),
          std::pair("WLR_BACKENDS", std::string("headless")),
          std::pair("WLR_RENDERER", std::string("pixman")),
          std::pair("WLR_LIBINPUT_NO_DEVICES", std::string("1"))})
        setVariable(server.process, QLatin1String(variable), value);
    server.process.setStandardErrorFile(QProcess::nullDevice());
    server.start(command);
    bool isListening = false;
    untilOutside([&] {
        for (const auto* name : {"wayland-0", "wayland-1"})
            if (fs::is_socket(run / name))
                socket = (run / name).native();
        // The socket is there for a moment before sway accepts connections.
        isListening = !socket.empty() && WaylandConnection::open(socket, [] {});
        return isListening || server.process.state() == QProcess::NotRunning;
    });
    if (!isListening)
        throw std::runtime_error("no sway");
}

void WaylandServer::prepare(ChildProgram& program) const {
    setVariable(program.process, u"WAYLAND_DISPLAY"_s, socket);
    setVariable(program.process, u"SWAYSOCK"_s, (folder / "run/ipc").native());
    setVariable(program.process, u"XDG_RUNTIME_DIR"_s, (folder / "run").native());
}

QByteArray WaylandServer::run(const QStringList& command, const QByteArray& input) const {
    ChildProgram program;
    prepare(program);
    program.start(command, input);
    return program.output();
}

void WaylandServer::command(const QString& text) const {
    run({u"swaymsg"_s, text});
}

} // namespace tidemark::test
