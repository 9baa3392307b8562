#include "app/control/ControlClient.h"

#include "core/base/Error.h"
#include "core/base/Text.h"
#include "core/system/PeerUser.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QLocalSocket>
#include <algorithm>

#include <unistd.h>

namespace tidemark::ControlClient {

namespace {

int millisecondsLeft(const QDeadlineTimer& deadline) {
    return static_cast<int>(deadline.remainingTime());
}

/// False when nobody listens there.
bool connectTo(QLocalSocket& socket, const std::filesystem::path& path,
               std::chrono::milliseconds patience) {
    socket.connectToServer(QFile::decodeName(path.c_str()));
    if (!socket.waitForConnected(static_cast<int>(patience.count()))) {
        if (socket.error() == QLocalSocket::ServerNotFoundError
            || socket.error() == QLocalSocket::ConnectionRefusedError)
            return false;
        throw Error("The recorder's socket " + textFromBytes(path.native())
                    + " could not be reached.");
    }
    if (peerUser(static_cast<int>(socket.socketDescriptor())) != ::geteuid())
        throw Error("The recorder's socket belongs to another user.");
    return true;
}

void send(QLocalSocket& socket, const std::string& frame, const QDeadlineTimer& deadline) {
    socket.write(frame.data(), static_cast<qint64>(frame.size()));
    while (socket.bytesToWrite() > 0)
        if (!socket.waitForBytesWritten(millisecondsLeft(deadline)))
            throw Error("The running recorder did not take the command.");
}

/// Appends what comes until `frame` has `size` bytes.
void receive(QLocalSocket& socket, std::string& frame, std::size_t size,
             const QDeadlineTimer& deadline) {
    while (frame.size() < size) {
        if (socket.bytesAvailable() == 0 && !socket.waitForReadyRead(millisecondsLeft(deadline))
            && socket.bytesAvailable() == 0)
            throw Error("The running recorder gave no answer.");
        const std::size_t filled = frame.size();
        const auto wanted =
            std::min(size - filled, static_cast<std::size_t>(socket.bytesAvailable()));
        frame.resize(filled + wanted);
        const qint64 count = socket.read(frame.data() + filled, static_cast<qint64>(wanted));
        frame.resize(filled + static_cast<std::size_t>(std::max<qint64>(count, 0)));
    }
}

} // namespace

std::optional<ControlAnswer> ask(const std::filesystem::path& socket, const ControlRequest& request,
                                 const Patience& patience) {
    QLocalSocket connection;
    if (!connectTo(connection, socket, patience.connection))
        return std::nullopt;

    const std::string frame = control::requestFrame(request);
    const QDeadlineTimer deadline(patience.answer);
    send(connection, frame, deadline);
    std::string answer;
    receive(connection, answer, control::headerSize, deadline);
    const std::size_t size = control::announcedSize(answer);
    if (size > control::mostAnswerBytes)
        throw Error("The running recorder gave no answer.");
    answer.reserve(control::headerSize + size);
    receive(connection, answer, control::headerSize + size, deadline);
    return control::decodedAnswer(std::string_view(answer).substr(control::headerSize));
}

} // namespace tidemark::ControlClient
