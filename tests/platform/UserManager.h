#pragma once

#include "tests/support/TemporaryFolder.h"

#include <QDBusConnection>
#include <QProcess>
#include <filesystem>
#include <optional>
#include <string>

namespace tidemark::test {

/// A real service manager of a user (systemd --user) and the message bus that it starts, in a
/// control group and a mount namespace of their own.
class UserManager {
public:
    /// Why there can be none on this machine; absent when there can.
    static std::optional<std::string> absence();

    UserManager();
    ~UserManager();

    /// Waits for the bus and connects to it.
    QDBusConnection connect();

    /// The home folder of its services.
    const TemporaryFolder& home() const { return folder; }

    /// Runs a shell command in the background in its namespace, such as systemd-run.
    void run(const QByteArray& command) { process.write(command + " &\n"); }

private:
    TemporaryFolder folder;
    std::filesystem::path runtime;
    std::filesystem::path group;
    QProcess process;
};

} // namespace tidemark::test
