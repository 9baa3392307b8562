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

/// Carries a request out. The stop is requested when the client is gone. What it throws is the
/// error of the answer.
using ControlHandler =
    std::function<QCoro::Task<ControlAnswer>(ControlRequest request, std::stop_token stop)>;

/// One client of the recorder: takes its request, has it carried out, and streams the answer. A
/// client that breaks a rule or takes too long is dropped without a word.
class ControlConnection final : public QObject {
public:
    /// A request must be complete so long after the client came.
    static constexpr double requestSeconds = 5;
    /// An answer must be read so long after it was offered.
    static constexpr double answerSeconds = 30;

    /// `ended` is called once with the connection, from the event loop; the object is to be deleted
    /// later then. The coroutines of the connection run in `tasks`.
    ControlConnection(FileDescriptor client, ControlHandler handler, AppClock& time,
                      const TaskScope& tasks, std::function<void(ControlConnection*)> ended);
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
    bool isComplete = false;
    bool hasEnded = false;
    std::stop_source deadline;
    std::stop_source departure;
};

} // namespace tidemark
