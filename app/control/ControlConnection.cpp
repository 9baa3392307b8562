#include "app/control/ControlConnection.h"

#include "app/base/Background.h"

#include <algorithm>
#include <utility>

namespace tidemark {

namespace {

/// The most bytes passed to the socket at a time. The socket copies them, so a whole answer passed
/// at once would be in memory twice.
constexpr std::size_t pieceSize = std::size_t{256} * 1024;
constexpr std::size_t mostIncoming =
    controlProtocol::headerSize + controlProtocol::mostRequestBytes;

QCoro::Task<ControlAnswer> carriedOut(ControlHandler handler, std::string json,
                                      std::stop_token stop) {
    try {
        auto request = controlProtocol::decodedRequest(json);
        ControlAnswer answer = co_await handler(std::move(request), std::move(stop));
        co_return answer;
    } catch (const std::exception& error) {
        co_return ControlAnswer{1, "", error.what()};
    }
}

} // namespace

ControlConnection::ControlConnection(FileDescriptor client, ControlHandler carryOut,
                                     AppClock& clock, const TaskScope& scope,
                                     std::function<void(ControlConnection*)> didEnd)
    : carryOut(std::move(carryOut)), clock(clock), scope(scope), didEnd(std::move(didEnd)) {
    connect(&socket, &QLocalSocket::readyRead, this, [this] { receive(); });
    connect(&socket, &QLocalSocket::bytesWritten, this, [this] { sendMore(); });
    connect(&socket, &QLocalSocket::disconnected, this, [this] { end(); });
    // One byte more than a request may have, to detect a longer one.
    socket.setReadBufferSize(mostIncoming + 1);
    startDeadline(requestSeconds);
    if (socket.setSocketDescriptor(client.get()))
        client.release();
    else
        QMetaObject::invokeMethod(this, [this] { end(); }, Qt::QueuedConnection);
}

ControlConnection::~ControlConnection() {
    socket.disconnect(this);
    deadline.request_stop();
    departure.request_stop();
}

void ControlConnection::receive() {
    if (isComplete)
        return;
    incoming += socket.readAll().toStdString();
    if (incoming.size() < controlProtocol::headerSize)
        return;
    const std::size_t size = controlProtocol::announcedSize(incoming);
    const std::size_t whole = controlProtocol::headerSize + size;
    if (size == 0 || size > controlProtocol::mostRequestBytes || incoming.size() > whole)
        return end();
    if (incoming.size() < whole)
        return;
    isComplete = true;
    deadline.request_stop();
    scope.start(answer(this, std::exchange(incoming, {}).substr(controlProtocol::headerSize)));
}

QCoro::Task<void> ControlConnection::answer(QPointer<ControlConnection> connection,
                                            std::string json) {
    const std::stop_token stop = connection->departure.get_token();
    ControlAnswer result = co_await carriedOut(connection->carryOut, std::move(json), stop);
    if (stop.stop_requested())
        co_return;
    // In the background, since encoding tens of megabytes of events would block the event loop for
    // too long.
    auto encode = [answer = std::move(result)](const std::stop_token&) {
        return controlProtocol::answerFrame(answer);
    };
    std::string frame;
    try {
        std::string encoded =
            co_await runInBackground(std::move(encode), stop, WorkPriority::userInitiated);
        frame = std::move(encoded);
    } catch (const std::exception& error) {
        // Without an answer the client would wait until its time limit.
        frame = controlProtocol::answerFrame({1, "", error.what()});
    }
    if (connection && !stop.stop_requested())
        connection->offer(std::move(frame));
}

void ControlConnection::offer(std::string frame) {
    outgoing = std::move(frame);
    startDeadline(answerSeconds);
    sendMore();
}

void ControlConnection::sendMore() {
    while (sent < outgoing.size() && socket.bytesToWrite() < static_cast<qint64>(pieceSize)) {
        const std::size_t count = std::min(pieceSize, outgoing.size() - sent);
        if (socket.write(outgoing.data() + sent, static_cast<qint64>(count)) < 0)
            return end();
        sent += count;
    }
    if (sent == outgoing.size() && socket.bytesToWrite() == 0)
        end();
}

void ControlConnection::end() {
    if (std::exchange(hasEnded, true))
        return;
    deadline.request_stop();
    departure.request_stop();
    socket.abort();
    didEnd(this);
}

void ControlConnection::startDeadline(double seconds) {
    deadline = std::stop_source();
    scope.start(dropAfter(this, seconds, deadline.get_token()));
}

QCoro::Task<void> ControlConnection::dropAfter(QPointer<ControlConnection> connection,
                                               double seconds, std::stop_token stop) {
    const bool isLate = co_await connection->clock.sleep(seconds, std::move(stop));
    if (isLate && connection)
        connection->end();
}

} // namespace tidemark
