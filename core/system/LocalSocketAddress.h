#pragma once

#include "core/base/FileDescriptor.h"

#include <expected>
#include <filesystem>

#include <sys/socket.h>
#include <sys/un.h>

namespace tidemark {

/// The address of a local socket for bind(2) and connect(2), which only take short paths (108 bytes
/// on Linux, 104 on a Mac). One source file per system; on Linux a longer path is reached through
/// its opened folder, so the address is valid while this object exists.
class LocalSocketAddress {
public:
    /// The error is ENAMETOOLONG, or the `errno` of opening the folder.
    static std::expected<LocalSocketAddress, int> of(const std::filesystem::path& path);

    const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&address); }
    socklen_t size() const { return sizeof address; }

private:
    LocalSocketAddress() = default;
    /// False when the path is too long.
    bool set(const std::filesystem::path& path);

    FileDescriptor folder;
    sockaddr_un address{};
};

} // namespace tidemark
