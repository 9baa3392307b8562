#include "app/control/ControlServer.h"

#include "core/base/Error.h"

#include <QScopeGuard>
#include <algorithm>
#include <utility>

namespace tidemark {

ControlServer::ControlServer(ControlHandler handler, AppClock& time)
    : carryOut(std::move(handler)), clock(time) {}

ControlServer::~ControlServer() {
    listener.reset();
    // At once: each stops what runs on its behalf, and the scope then waits for that.
    for (auto& connection : std::exchange(connections, {}))
        delete connection.release();
}

void ControlServer::listen(const std::filesystem::path& socket, const FolderLock& held) {
    listener = std::make_unique<LocalListener>(
        socket, held, [this](FileDescriptor client) { welcome(std::move(client)); });
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
