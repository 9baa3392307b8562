#pragma once

#include <utility>

#include <unistd.h>

namespace tidemark {

/// Owns an open POSIX file descriptor and closes it.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int opened) : descriptor(opened) {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : descriptor(std::exchange(other.descriptor, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) {
            reset();
            descriptor = std::exchange(other.descriptor, -1);
        }
        return *this;
    }
    ~FileDescriptor() { reset(); }

    explicit operator bool() const { return descriptor >= 0; }
    int get() const { return descriptor; }
    /// Returns the descriptor without closing it; the caller owns it from now on.
    int release() { return std::exchange(descriptor, -1); }
    void reset() {
        if (descriptor >= 0)
            ::close(std::exchange(descriptor, -1));
    }

private:
    int descriptor = -1;
};

} // namespace tidemark
