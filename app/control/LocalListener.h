#pragma once

#include "core/base/FileDescriptor.h"
#include "core/base/FolderLock.h"

#include <QSocketNotifier>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <memory>

namespace tidemark {

/// A listening local socket that only its user can reach. Unlike the one of Qt it can be told to
/// leave clients waiting in the system's queue, and it outlives a moment without descriptors.
class LocalListener {
public:
    using Accept = std::function<void(FileDescriptor)>;

    /// Listens at `path`, whose folder is made private or has to be. Under the lock of the data
    /// folder that the socket stands for, what is left there of a dead process is removed. Throws
    /// `Error`. `accept` is called from the event loop with each client of this user.
    LocalListener(std::filesystem::path path, const FolderLock& held, Accept accept);
    ~LocalListener();
    LocalListener(const LocalListener&) = delete;
    LocalListener& operator=(const LocalListener&) = delete;

    /// While false, clients wait for their turn.
    void setAccepting(bool accepting);

private:
    void acceptOne();

    std::filesystem::path socketPath;
    Accept handOver;
    FileDescriptor socket;
    std::unique_ptr<QSocketNotifier> notifier;
    /// Running while there are no descriptors for another client.
    QTimer recovery;
    bool wanted = true;
};

} // namespace tidemark
