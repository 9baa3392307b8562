#pragma once

#include "core/base/FileDescriptor.h"

#include <stdexcept>
#include <string>

#include <fcntl.h>

namespace tidemark::test {

/// A pipe whose ends are closed in programs that the test starts.
struct Pipe {
    FileDescriptor reading;
    FileDescriptor writing;

    Pipe() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        reading = FileDescriptor(ends[0]);
        writing = FileDescriptor(ends[1]);
    }
    /// Writes until the pipe is full.
    void fill() const {
        ::fcntl(writing.get(), F_SETFL, O_NONBLOCK);
        const std::string block(4096, 'x');
        while (::write(writing.get(), block.data(), block.size()) > 0)
            ;
        ::fcntl(writing.get(), F_SETFL, 0);
    }
    /// Reads everything in the pipe without waiting for more.
    std::string taken() const {
        ::fcntl(reading.get(), F_SETFL, O_NONBLOCK);
        std::string all;
        std::string block(65'536, '\0');
        for (ssize_t count = 0; (count = ::read(reading.get(), block.data(), block.size())) > 0;)
            all.append(block, 0, static_cast<std::size_t>(count));
        return all;
    }
};

} // namespace tidemark::test
