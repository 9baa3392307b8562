#include "app/control/LocalListener.h"

#include "core/base/Error.h"
#include "core/base/PrivateFolder.h"
#include "core/base/Text.h"
#include "core/system/LocalSocketAddress.h"
#include "core/system/PeerUser.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tidemark {

namespace {

constexpr int mostWaiting = 64;
constexpr std::chrono::seconds recoveryTime{1};

/// Failures of accept(2) that last for a while, so that an immediate retry would fail again.
constexpr std::array lastingFailures{EMFILE, ENFILE, ENOBUFS, ENOMEM};

Error failure(const std::filesystem::path& path, const std::string& reason) {
    return Error("The socket " + textFromBytes(path.native()) + " could not be made: " + reason
                 + ".");
}
Error failure(const std::filesystem::path& path) {
    return failure(path, std::strerror(errno));
}

/// Not every system has SOCK_CLOEXEC and SOCK_NONBLOCK.
bool makePrivateToProcess(const FileDescriptor& socket) {
    return ::fcntl(socket.get(), F_SETFD, FD_CLOEXEC) == 0
           && ::fcntl(socket.get(), F_SETFL, O_NONBLOCK) == 0;
}

void removeStaleSocket(const std::filesystem::path& path) {
    struct stat status{};
    if (::lstat(path.c_str(), &status) != 0)
        return;
    if (!S_ISSOCK(status.st_mode))
        throw failure(path, "another file is in its place");
    if (::unlink(path.c_str()) != 0)
        throw failure(path);
}

FileDescriptor listeningSocket(const std::filesystem::path& path) {
    const auto address = LocalSocketAddress::of(path);
    if (!address)
        throw failure(path, std::strerror(address.error()));
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM, 0));
    // The folder is private, so no other user can connect before the mode is set.
    if (!socket || !makePrivateToProcess(socket)
        || ::bind(socket.get(), address->get(), address->size()) != 0
        || ::chmod(path.c_str(), 0600) != 0 || ::listen(socket.get(), mostWaiting) != 0)
        throw failure(path);
    return socket;
}

} // namespace

LocalListener::LocalListener(const std::filesystem::path& socketPath, const FolderLock& lock,
                             Accept handOver)
    : socketPath(socketPath), lock(lock), handOver(std::move(handOver)) {
    recovery.setSingleShot(true);
    recovery.callOnTimeout([this] { notifier->setEnabled(wanted); });
    requirePrivateFolder(socketPath.parent_path());
    removeStaleSocket(socketPath);
    listen();
}

LocalListener::~LocalListener() {
    if (own && identityAt(socketPath) == own)
        ::unlink(socketPath.c_str());
}

std::optional<LocalListener::Identity>
LocalListener::identityAt(const std::filesystem::path& path) {
    struct stat status{};
    if (::lstat(path.c_str(), &status) != 0)
        return std::nullopt;
    return Identity{status.st_dev, status.st_ino};
}

void LocalListener::restore() {
    // Without the lock the path may belong to another process.
    if (identityAt(socketPath) || !lock.isCurrent())
        return;
    requirePrivateFolder(socketPath.parent_path());
    listen();
}

void LocalListener::listen() {
    FileDescriptor fresh = listeningSocket(socketPath);
    own = identityAt(socketPath);
    // Destroyed before the socket that it watches.
    notifier.reset();
    socket = std::move(fresh);
    notifier = std::make_unique<QSocketNotifier>(socket.get(), QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, [this] { acceptOne(); });
    setAccepting(wanted);
}

void LocalListener::setAccepting(bool accepting) {
    wanted = accepting;
    notifier->setEnabled(wanted && !recovery.isActive());
}

void LocalListener::acceptOne() {
    FileDescriptor client(::accept(socket.get(), nullptr, nullptr));
    if (!client) {
        if (std::ranges::find(lastingFailures, errno) != lastingFailures.end()) {
            notifier->setEnabled(false);
            recovery.start(recoveryTime);
        }
        return;
    }
    if (makePrivateToProcess(client) && peerUser(client.get()) == ::geteuid())
        handOver(std::move(client));
}

} // namespace tidemark
