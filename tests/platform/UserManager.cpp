#include "tests/platform/UserManager.h"

#include "tests/app/support/Await.h"

#include <QProcessEnvironment>
#include <QTimer>
#include <fstream>

#include <unistd.h>

namespace tidemark::test {

using namespace Qt::StringLiterals;

namespace {

/// Where control groups of version 2 are mounted; empty when they are not.
std::filesystem::path controlGroups() {
    std::ifstream mounts("/proc/self/mounts");
    for (std::string device, folder, type, rest; mounts >> device >> folder >> type;) {
        std::getline(mounts, rest);
        if (type == "cgroup2")
            return folder;
    }
    return {};
}

/// Starts the service manager and then carries out commands from standard input. The manager starts
/// only on a machine that systemd has started, which it recognises by the folder in /run.
constexpr const char* script = R"(
    set -e
    echo $$ >"$GROUP/cgroup.procs"
    exec unshare --cgroup --mount --propagation private sh -ec '
        umount -R /sys/fs/cgroup
        mount -t cgroup2 none /sys/fs/cgroup
        mount -t tmpfs none /run
        mkdir -p /run/systemd/system
        /usr/lib/systemd/systemd --user --log-target=null &
        while read -r command; do eval "$command"; done'
)";

} // namespace

std::optional<std::string> UserManager::absence() {
    if (::geteuid() != 0)
        return "only root may create control groups";
    for (const char* file : {"/usr/lib/systemd/systemd", "/usr/lib/systemd/user/dbus.socket"})
        if (!std::filesystem::exists(file))
            return std::string(file) + " is not installed";
    if (controlGroups().empty() || !std::filesystem::exists("/sys/fs/cgroup"))
        return "control groups of version 2 are not mounted";
    return std::nullopt;
}

UserManager::UserManager()
    : runtime(folder.makeFolder("run")),
      group(controlGroups() / ("tidemark-test-" + std::to_string(::getpid()))) {
    std::filesystem::create_directory(group);
    std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"DBUS_SESSION_BUS_ADDRESS"_s);
    environment.insert(u"XDG_RUNTIME_DIR"_s, QString::fromStdString(runtime.native()));
    environment.insert(u"HOME"_s, QString::fromStdString(folder.path().native()));
    environment.insert(u"GROUP"_s, QString::fromStdString(group.native()));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(u"/bin/sh"_s, {u"-c"_s, QString::fromLatin1(script)});
    process.waitForStarted();
}

QDBusConnection UserManager::connect() {
    const QString address = u"unix:path="_s + QString::fromStdString((runtime / "bus").native());
    const QString name = u"user"_s;
    QTimer look;
    look.start(5);
    // The file of the socket is there a moment before somebody listens.
    until([&] {
        QDBusConnection::disconnectFromBus(name);
        return QDBusConnection::connectToBus(address, name).isConnected();
    });
    return QDBusConnection(name);
}

UserManager::~UserManager() {
    QDBusConnection::disconnectFromBus(u"user"_s);
    std::ofstream(group / "cgroup.kill") << 1;
    process.waitForFinished();
    // The system removes the killed processes a moment later.
    std::error_code error;
    for (int attempt = 0; attempt < 1'000 && ::rmdir(group.c_str()) != 0; ++attempt) {
        std::vector<std::filesystem::path> groups;
        for (std::filesystem::recursive_directory_iterator walk(group, error), end;
             !error && walk != end; walk.increment(error))
            if (walk->is_directory(error))
                groups.push_back(walk->path());
        for (auto inner = groups.rbegin(); inner != groups.rend(); ++inner)
            ::rmdir(inner->c_str());
    }
}

} // namespace tidemark::test
