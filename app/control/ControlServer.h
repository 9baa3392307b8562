#pragma once

#include "app/base/AppClock.h"
#include "app/base/TaskScope.h"
#include "app/control/ControlConnection.h"
#include "app/control/LocalListener.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace tidemark {

/// The recorder's end of the control socket: carries out what other processes of the same user
/// ask for. Main thread only.
class ControlServer {
public:
    /// Clients that are served at once. More of them wait in the system's queue.
    static constexpr std::size_t mostConnections = 16;
    /// Commands that are carried out at once, also for clients that are gone and whose command
    /// could not be stopped. More of them are refused.
    static constexpr std::size_t mostCommands = 32;

    explicit ControlServer(ControlHandler handler, AppClock& time = AppClock::system());
    /// Drops all clients, and waits for what is being carried out for them to end.
    ~ControlServer();
    ControlServer(const ControlServer&) = delete;
    ControlServer& operator=(const ControlServer&) = delete;

    /// Seconds between two looks whether the socket is still there. One that was removed, by hand
    /// or by who cleans up temporary files, is made anew.
    static constexpr double restoringInterval = 60;

    /// Starts to listen as `LocalListener` does, at the first of `sockets` that it can have. They
    /// are the `control::socketPaths` of the locked folder. The lock outlives the server. Throws
    /// `Error` when it can have none.
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
