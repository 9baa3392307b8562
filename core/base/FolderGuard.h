#pragma once

#include <functional>

namespace tidemark {

/// Every writer of a data folder is made with one and asks it before it creates, replaces or
/// deletes anything: once the folder was removed or replaced, what has its path may belong to
/// another process. Copies are alike; any thread may ask.
class FolderGuard {
public:
    /// Permits everything: for files that are under no lock, such as one named on the command line.
    FolderGuard() = default;
    /// `ask` is true as long as the folder is this process's own. `FolderLock::guard` is the one
    /// to use.
    explicit FolderGuard(std::function<bool()> ask) : isOwn(std::move(ask)) {}

    /// Throws an `Error` when the folder is no longer this process's own.
    void require() const;

private:
    std::function<bool()> isOwn;
};

} // namespace tidemark
