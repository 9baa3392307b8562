#pragma once

#include "app/base/AppClock.h"
#include "app/base/TaskScope.h"
#include "app/control/ControlConnection.h"
#include "app/control/LocalListener.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace tidemark {

/// The server side of the control socket: carries out commands of other processes of the same user.
/// Main thread only.
class ControlServer {
public:
    /// The most clients that are served at the same time. Others wait in the system's queue.
    static constexpr std::size_t mostConnections = 16;
    /// The most commands that are carried out at the same time, including those of disconnected
    /// clients that could not be stopped. Others are refused.
    static constexpr std::size_t mostCommands = 32;

    explicit ControlServer(ControlHandler carryOut, AppClock& clock = AppClock::system());
    /// Disconnects all clients and waits for their commands to end.
    ~ControlServer();
    ControlServer(const ControlServer&) = delete;
    ControlServer& operator=(const ControlServer&) = delete;

    /// Seconds between two checks whether the socket still exists. A socket that was removed, for
    /// example by a cleanup of temporary files, is created again.
    static constexpr double restoringInterval = 60;

    /// Starts to listen, as `LocalListener` does, at the first of `sockets` that works; these are
    /// the `controlProtocol::socketPaths` of the locked folder. The lock must outlive the server.
    /// Throws `Error` when none works.
    void listen(const std::vector<std::filesystem::path>& sockets, const FolderLock& held);

    std::size_t connectionCount() const { return connections.size(); }

private:
    QCoro::Task<ControlAnswer> carriedOut(ControlRequest request, std::stop_token stop);
    QCoro::Task<void> keepListening();
    void welcome(FileDescriptor client);
    void forget(ControlConnection* connection);

    struct DeleteLater {
        void operator()(QObject* object) const { object->deleteLater(); }
    };

    ControlHandler carryOut;
    AppClock& clock;
    std::unique_ptr<LocalListener> listener;
    std::vector<std::unique_ptr<ControlConnection, DeleteLater>> connections;
    std::size_t commands = 0;
    TaskScope scope;
};

} // namespace tidemark
