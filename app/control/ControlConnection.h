#pragma once

#include "app/base/AppClock.h"
#include "app/base/TaskScope.h"
#include "app/control/ControlProtocol.h"
#include "core/base/FileDescriptor.h"

#include <QCoroTask>
#include <QLocalSocket>
#include <QPointer>
#include <functional>
#include <stop_token>
#include <string>

namespace tidemark {

/// Carries out a request. `stop` is requested when the client has disconnected or the server ends.
/// An exception becomes the error of the answer.
using ControlHandler =
    std::function<QCoro::Task<ControlAnswer>(ControlRequest request, std::stop_token stop)>;

/// One client of the recorder: receives its request, has it carried out, and sends the answer. A
/// client whose request has a wrong length, or that takes too long, is disconnected without an
/// answer; a request that can't be decoded is answered with the error.
class ControlConnection final : public QObject {
public:
    /// Seconds from the connection until the request must be complete.
    static constexpr double requestSeconds = 5;
    /// Seconds within which the client must read the answer.
    static constexpr double answerSeconds = 30;

    /// `didEnd` is called once, from the event loop, and has to delete the connection later. The
    /// coroutines of the connection run in `scope`.
    ControlConnection(FileDescriptor client, ControlHandler carryOut, AppClock& clock,
                      const TaskScope& scope, std::function<void(ControlConnection*)> didEnd);
    ~ControlConnection() override;

private:
    void receive();
    void offer(std::string frame);
    void sendMore();
    void end();
    void startDeadline(double seconds);

    static QCoro::Task<void> answer(QPointer<ControlConnection> connection, std::string json);
    static QCoro::Task<void> dropAfter(QPointer<ControlConnection> connection, double seconds,
                                       std::stop_token stop);

    QLocalSocket socket;
    ControlHandler carryOut;
    AppClock& clock;
    const TaskScope& scope;
    std::function<void(ControlConnection*)> didEnd;
    std::string incoming;
    std::string outgoing;
    std::size_t sent = 0;
    /// True when the whole request has been received.
    bool isComplete = false;
    bool hasEnded = false;
    /// Ends the wait of `dropAfter`.
    std::stop_source deadline;
    /// Stops the command when the client has disconnected or the server ends.
    std::stop_source departure;
};

} // namespace tidemark
