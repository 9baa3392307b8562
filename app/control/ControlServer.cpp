#include "app/control/ControlServer.h"

#include "core/base/Error.h"

#include <QLoggingCategory>
#include <QScopeGuard>
#include <algorithm>
#include <utility>

namespace tidemark {

ControlServer::ControlServer(ControlHandler carryOut, AppClock& clock)
    : carryOut(std::move(carryOut)), clock(clock) {}

ControlServer::~ControlServer() {
    listener.reset();
    // Deletes all connections at once: each stops its command, and the scope then waits for the
    // commands.
    for (auto& connection : std::exchange(connections, {}))
        delete connection.release();
}

void ControlServer::listen(const std::vector<std::filesystem::path>& sockets,
                           const FolderLock& held) {
    std::string problem = "There is no place for a socket.";
    for (const auto& socket : sockets) {
        try {
            listener = std::make_unique<LocalListener>(
                socket, held, [this](FileDescriptor client) { welcome(std::move(client)); });
            return scope.start(keepListening());
        } catch (const Error& error) {
            problem = error.what();
        }
    }
    throw Error(problem);
}

QCoro::Task<void> ControlServer::keepListening() {
    std::string problem;
    while (!scope.isStopping()) {
        co_await clock.sleep(restoringInterval, scope.token(), AppClock::Slack::allowed);
        if (scope.isStopping() || !listener)
            co_return;
        try {
            listener->restore();
            problem.clear();
        } catch (const Error& error) {
            // Logs a problem once and not every minute.
            if (std::exchange(problem, error.what()) != error.what())
                qWarning("%s", error.what());
        }
    }
}

QCoro::Task<ControlAnswer> ControlServer::carriedOut(ControlRequest request, std::stop_token stop) {
    if (commands >= mostCommands)
        throw Error("The recorder is still busy with earlier commands; try again in a moment.");
    ++commands;
    const auto done = qScopeGuard([this] { --commands; });
    ControlAnswer answer = co_await carryOut(std::move(request), std::move(stop));
    co_return answer;
}

void ControlServer::welcome(FileDescriptor client) {
    auto handler = [this](ControlRequest request, std::stop_token stop) {
        return carriedOut(std::move(request), std::move(stop));
    };
    connections.emplace_back(
        new ControlConnection(std::move(client), std::move(handler), clock, scope,
                              [this](ControlConnection* ended) { forget(ended); }));
    listener->setAccepting(connections.size() < mostConnections);
}

void ControlServer::forget(ControlConnection* connection) {
    std::erase_if(connections, [&](const auto& held) { return held.get() == connection; });
    listener->setAccepting(connections.size() < mostConnections);
}

} // namespace tidemark
