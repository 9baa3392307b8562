#pragma once

#include "platform/linux/SessionThread.h"

#include <QObject>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace tidemark {

/// Something that works on a connection to a display server, such as following its clipboard. Lives
/// on the thread of the connection.
class DisplayReader {
public:
    virtual ~DisplayReader() = default;
};

/// The connection of this process to a display server, on a thread of its own. Connects when the
/// first reader is added, and again when the server has gone and come back. `Connection` has
///
///     static std::unique_ptr<Connection> open(const std::string& display,
///                                             std::function<void()> lost);
///     /// Sends what was requested, and handles the events that were received meanwhile.
///     void settle();
///
/// Main thread only.
template <class Connection>
class DisplaySession {
public:
    struct Plug {
        /// Makes the reader; called on the thread, once for each connection. The reader is
        /// destroyed there when the connection is lost or the reader is removed.
        std::function<std::unique_ptr<DisplayReader>(Connection&)> make;
        /// Called on the thread when the connection is lost, after each failed attempt to connect,
        /// and at once for a plug that is added between two attempts.
        std::function<void()> noteAbsence;
    };

    explicit DisplaySession(std::string display)
        : state(std::make_shared<State>(std::move(display))),
          thread(std::make_shared<SessionThread>("display")) {}
    ~DisplaySession() {
        thread->post([state = state] { state->close(); });
    }
    DisplaySession(const DisplaySession&) = delete;
    DisplaySession& operator=(const DisplaySession&) = delete;

    /// Adds a reader, until the returned object is destroyed.
    [[nodiscard]] std::shared_ptr<void> add(Plug plug) {
        const int id = ++lastId;
        thread->post([state = state, id, plug = std::move(plug)] { state->add(id, plug); });
        const auto remove = [thread = std::weak_ptr(thread), state = state, id](void*) {
            if (const auto running = thread.lock())
                running->post([state, id] { state->remove(id); });
        };
        return {this, remove};
    }

private:
    /// Used on the thread only.
    class State {
    public:
        explicit State(std::string display) : display(std::move(display)) {}

        void add(int id, const Plug& plug) {
            plugs[id] = plug;
            if (connection) {
                readers[id] = plug.make(*connection);
                connection->settle();
            } else if (isWaiting)
                plug.noteAbsence();
            else
                connect();
        }
        void remove(int id) {
            readers.erase(id);
            plugs.erase(id);
            if (connection)
                connection->settle();
        }
        void close() {
            isClosed = true;
            readers.clear();
            plugs.clear();
            connection.reset();
        }

    private:
        static constexpr std::chrono::seconds firstPause{1};
        static constexpr std::chrono::seconds longestPause{60};

        void connect() {
            isWaiting = false;
            if (isClosed)
                return;
            connection = Connection::open(display, [this] { lose(); });
            if (!connection)
                return waitForServer();
            pause = firstPause;
            for (const auto& [id, plug] : plugs)
                readers[id] = plug.make(*connection);
            connection->settle();
        }
        void lose() {
            readers.clear();
            connection.reset();
            waitForServer();
        }
        void waitForServer() {
            isWaiting = true;
            for (const auto& [id, plug] : plugs)
                plug.noteAbsence();
            QTimer::singleShot(pause, [this, held = std::weak_ptr(alive)] {
                if (!held.expired())
                    connect();
            });
            pause = std::min(2 * pause, longestPause);
        }

        const std::string display;
        std::map<int, Plug> plugs;
        std::unique_ptr<Connection> connection;
        std::map<int, std::unique_ptr<DisplayReader>> readers;
        bool isWaiting = false;
        bool isClosed = false;
        std::chrono::seconds pause = firstPause;
        std::shared_ptr<const bool> alive = std::make_shared<const bool>(true);
    };

    const std::shared_ptr<State> state;
    const std::shared_ptr<SessionThread> thread;
    int lastId = 0;
};

} // namespace tidemark
