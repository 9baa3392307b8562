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

/// A listening local socket that only its user can reach. Unlike QLocalServer it can leave clients
/// waiting in the system's queue, and it recovers from a lack of file descriptors. The file of the
/// socket may be removed, or replaced by another listener, at any time; the destructor removes no
/// file of another listener.
class LocalListener {
public:
    using Accept = std::function<void(FileDescriptor)>;

    /// Listens at `socketPath`. Its folder is created with mode 0700; one that exists must be
    /// private. A socket at that path is removed, since the lock of the data folder proves that its
    /// process has ended. Throws `Error`. `handOver` is called from the event loop with each client
    /// of this user. The lock must outlive the listener.
    LocalListener(const std::filesystem::path& socketPath, const FolderLock& lock, Accept handOver);
    ~LocalListener();
    LocalListener(const LocalListener&) = delete;
    LocalListener& operator=(const LocalListener&) = delete;

    /// While false, clients wait in the system's queue.
    void setAccepting(bool accepting);

    /// Listens again when the file was removed and the lock is still current. Throws `Error`.
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
    /// Active while there are no descriptors for another client.
    QTimer recovery;
    bool wanted = true;
};

} // namespace tidemark
