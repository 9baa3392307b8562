#pragma once

#include "tests/platform/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

#include <QProcess>
#include <filesystem>
#include <optional>
#include <string>

namespace tidemark::test {

/// A real service manager of a user (systemd --user) on a private bus, in a control group and a
/// mount namespace of its own.
class UserManager {
public:
    /// Why there can be none on this machine.
    static std::optional<std::string> absence();

    explicit UserManager(const PrivateBus& bus);
    ~UserManager();

    /// Runs a shell command in the background in its namespace, such as systemd-run.
    void run(const QByteArray& command) { process.write(command + " &\n"); }

private:
    TemporaryFolder folder;
    std::filesystem::path group;
    QProcess process;
};

} // namespace tidemark::test
