#include "app/control/LocalListener.h"

#include "core/base/Error.h"
#include "core/base/PrivateFolder.h"
#include "core/base/Text.h"
#include "core/system/PeerUser.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace tidemark {

namespace {

constexpr int mostWaiting = 64;
constexpr std::chrono::seconds recoveryTime{1};

/// Failures of accept(2) that last for a while and would else come back at once.
constexpr std::array lastingFailures{EMFILE, ENFILE, ENOBUFS, ENOMEM};

Error failure(const std::filesystem::path& path, const std::string& reason) {
    return Error("The socket " + textFromBytes(path.native()) + " could not be made: " + reason
                 + ".");
}
Error failure(const std::filesystem::path& path) {
    return failure(path, std::strerror(errno));
}

/// Not every system can open a socket so at once.
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
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.native().size() >= sizeof address.sun_path)
        throw failure(path, "its path is too long");
    path.native().copy(address.sun_path, sizeof address.sun_path - 1);

    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM, 0));
    // The folder is private, so nobody connects before the mode is set.
    if (!socket || !makePrivateToProcess(socket)
        || ::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0
        || ::chmod(path.c_str(), 0600) != 0 || ::listen(socket.get(), mostWaiting) != 0)
        throw failure(path);
    return socket;
}

} // namespace

LocalListener::LocalListener(std::filesystem::path path, const FolderLock&, Accept accept)
    : socketPath(std::move(path)), handOver(std::move(accept)) {
    requirePrivateFolder(socketPath.parent_path());
    removeStaleSocket(socketPath);
    socket = listeningSocket(socketPath);
    notifier = std::make_unique<QSocketNotifier>(socket.get(), QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, [this] { acceptOne(); });
    recovery.setSingleShot(true);
    recovery.callOnTimeout([this] { notifier->setEnabled(wanted); });
}

LocalListener::~LocalListener() {
    ::unlink(socketPath.c_str());
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
