#pragma once

#include "core/base/FileDescriptor.h"
#include "core/base/FolderLock.h"

#include <QSocketNotifier>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include <sys/types.h>

namespace tidemark {

/// A listening local socket that only its user can reach. Unlike the one of Qt it can leave clients
/// waiting in the system's queue, and it outlives a moment without descriptors. Its file may be
/// removed, or replaced by that of another listener, at any time: what is not its own it leaves
/// alone.
class LocalListener {
public:
    using Accept = std::function<void(FileDescriptor)>;

    /// Listens at `path`, whose folder is made private or has to be. Under the lock of the data
    /// folder that the socket stands for, what is left there of a dead process is removed. Throws
    /// `Error`. `accept` is called from the event loop with each client of this user. The lock
    /// outlives the listener.
    LocalListener(std::filesystem::path path, const FolderLock& held, Accept accept);
    ~LocalListener();
    LocalListener(const LocalListener&) = delete;
    LocalListener& operator=(const LocalListener&) = delete;

    /// While false, clients wait for their turn.
    void setAccepting(bool accepting);

    /// Listens anew when nothing is at the path any more and the lock is still current. Throws
    /// `Error`.
    void restore();

private:
    struct Identity {
        dev_t device = 0;
        ino_t inode = 0;
        bool operator==(const Identity&) const = default;
    };

    static std::optional<Identity> identityAt(const std::filesystem::path& path);
    void listen();
    void acceptOne();

    std::filesystem::path socketPath;
    const FolderLock& lock;
    Accept handOver;
    FileDescriptor socket;
    std::optional<Identity> own;
    std::unique_ptr<QSocketNotifier> notifier;
    /// Running while there are no descriptors for another client.
    QTimer recovery;
    bool wanted = true;
};

} // namespace tidemark
