#include "app/control/ControlClient.h"

#include "core/base/Error.h"
#include "core/base/FileDescriptor.h"
#include "core/base/Text.h"
#include "core/system/LocalSocketAddress.h"
#include "core/system/PeerUser.h"

#include <QDeadlineTimer>
#include <QLocalSocket>
#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace tidemark::ControlClient {

namespace {

int millisecondsLeft(const QDeadlineTimer& deadline) {
    return static_cast<int>(deadline.remainingTime());
}

bool meansNoListener(int error) {
    return error == ENOENT || error == ENOTDIR || error == ECONNREFUSED;
}

Error failure(const std::filesystem::path& path, int error) {
    if (error == EAGAIN)
        return Error("The running recorder is busy: too many commands wait for it already.");
    return Error("The recorder's socket " + textFromBytes(path.native())
                 + " could not be reached: " + std::strerror(error) + ".");
}

/// Limits how long connect(2) waits for room in the queue of the listener.
void limitWait(const FileDescriptor& socket, std::chrono::milliseconds time) {
    const auto whole = std::chrono::duration_cast<std::chrono::seconds>(time);
    timeval limit{};
    limit.tv_sec = static_cast<time_t>(whole.count());
    limit.tv_usec = static_cast<suseconds_t>(std::chrono::microseconds(time - whole).count());
    ::setsockopt(socket.get(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
}

/// A socket that is connected to the listener at `path`; invalid when nothing listens there. Does
/// not use QLocalSocket, which needs an event loop and prints a warning when the queue of the
/// listener is full.
FileDescriptor connectedTo(const std::filesystem::path& path, std::chrono::milliseconds patience) {
    const auto address = LocalSocketAddress::of(path);
    if (!address && meansNoListener(address.error()))
        return {};
    if (!address)
        throw failure(path, address.error());
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM, 0));
    if (!socket || ::fcntl(socket.get(), F_SETFD, FD_CLOEXEC) != 0)
        throw failure(path, errno);
    limitWait(socket, patience);
    if (::connect(socket.get(), address->get(), address->size()) != 0) {
        if (meansNoListener(errno))
            return {};
        throw failure(path, errno);
    }
    if (peerUser(socket.get()) != ::geteuid())
        throw Error("The recorder's socket belongs to another user.");
    return socket;
}

bool isOverdue(const QLocalSocket& socket) {
    return socket.error() == QLocalSocket::SocketTimeoutError;
}

/// Sends the request. Returns false when the recorder closed the connection before the whole
/// request was sent.
bool send(QLocalSocket& socket, const std::string& frame, const QDeadlineTimer& deadline) {
    socket.write(frame.data(), static_cast<qint64>(frame.size()));
    while (socket.bytesToWrite() > 0)
        if (!socket.waitForBytesWritten(millisecondsLeft(deadline))) {
            if (isOverdue(socket))
                throw Error("The running recorder did not take the command.");
            return false;
        }
    return true;
}

/// Receives until `frame` has `size` bytes.
void receive(QLocalSocket& socket, std::string& frame, std::size_t size,
             const QDeadlineTimer& deadline) {
    while (frame.size() < size) {
        if (socket.bytesAvailable() == 0 && !socket.waitForReadyRead(millisecondsLeft(deadline))
            && socket.bytesAvailable() == 0) {
            if (!isOverdue(socket))
                throw RecorderEnded();
            throw Error("The running recorder gave no answer.");
        }
        const std::size_t filled = frame.size();
        const auto wanted =
            std::min(size - filled, static_cast<std::size_t>(socket.bytesAvailable()));
        frame.resize(filled + wanted);
        const qint64 count = socket.read(frame.data() + filled, static_cast<qint64>(wanted));
        frame.resize(filled + static_cast<std::size_t>(std::max<qint64>(count, 0)));
    }
}

} // namespace

std::optional<ControlAnswer> ask(const std::vector<std::filesystem::path>& sockets,
                                 const ControlRequest& request, const Patience& patience) {
    FileDescriptor connected;
    for (auto path = sockets.begin(); path != sockets.end() && !connected; ++path)
        connected = connectedTo(*path, patience.connection);
    if (!connected)
        return std::nullopt;

    const std::string frame = controlProtocol::requestFrame(request);
    QLocalSocket connection;
    if (!connection.setSocketDescriptor(connected.get()))
        throw Error("The running recorder could not be asked.");
    connected.release();
    const QDeadlineTimer deadline(patience.answer);
    if (!send(connection, frame, deadline))
        return std::nullopt;
    std::string answer;
    receive(connection, answer, controlProtocol::headerSize, deadline);
    const std::size_t size = controlProtocol::announcedSize(answer);
    if (size > controlProtocol::mostAnswerBytes)
        throw Error("The running recorder gave no answer.");
    answer.reserve(controlProtocol::headerSize + size);
    receive(connection, answer, controlProtocol::headerSize + size, deadline);
    return controlProtocol::decodedAnswer(
        std::string_view(answer).substr(controlProtocol::headerSize));
}

} // namespace tidemark::ControlClient
