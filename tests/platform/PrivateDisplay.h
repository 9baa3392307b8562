#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <memory>
#include <stdexcept>

namespace tidemark::test {

/// An X server without a screen (Xvfb), and optionally a window manager, for one test.
class PrivateDisplay {
public:
    /// Null where the machine lacks the server.
    static std::unique_ptr<PrivateDisplay> start() {
        auto display = std::unique_ptr<PrivateDisplay>(new PrivateDisplay);
        return display->server.state() == QProcess::Running ? std::move(display) : nullptr;
    }
    ~PrivateDisplay() {
        end(manager);
        stop();
    }

    /// The value of DISPLAY.
    const QString& name() const { return display; }
    void manageWindows() { run(manager, QStringLiteral("openbox"), {}); }
    /// Kills the server.
    void stop() { end(server); }

    /// Runs xdotool and returns its output, without the line feed at the end.
    QString xdotool(const QStringList& arguments) const {
        QProcess tool;
        run(tool, QStringLiteral("xdotool"), arguments);
        if (!tool.waitForFinished(60'000))
            throw std::runtime_error("xdotool hangs: " + arguments.join(u' ').toStdString());
        return QString::fromUtf8(tool.readAllStandardOutput().trimmed());
    }

private:
    PrivateDisplay() {
        server.setStandardErrorFile(QProcess::nullDevice());
        server.start(QStringLiteral("Xvfb"),
                     {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                      QStringLiteral("0"), QStringLiteral("1280x800x24"),
                      QStringLiteral("-nolisten"), QStringLiteral("tcp")});
        while (!server.canReadLine())
            if (!server.waitForReadyRead(60'000))
                return;
        display = u':' + QString::fromUtf8(server.readLine().trimmed());
    }

    void run(QProcess& process, const QString& program, const QStringList& arguments) const {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DISPLAY"), display);
        process.setProcessEnvironment(environment);
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(program, arguments);
        process.waitForStarted();
    }
    static void end(QProcess& process) {
        if (process.state() == QProcess::NotRunning)
            return;
        process.kill();
        process.waitForFinished();
    }

    QProcess server;
    QProcess manager;
    QString display;
};

} // namespace tidemark::test
