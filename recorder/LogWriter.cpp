#include "recorder/LogWriter.h"

#include <algorithm>
#include <cerrno>
#include <climits>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tidemark {

namespace {

/// A pipe that is ready for writing accepts at least this many bytes (pipe(7)).
constexpr std::size_t pieceSize = PIPE_BUF;

/// Opens the stream again: the flag O_NONBLOCK would apply to all processes that share the open
/// file, such as the shell that started the program.
FileDescriptor openedAgain(int stream) {
    struct stat status{};
    // Writing to a regular file does not block, and opening it again would give a second write
    // position.
    if (::fstat(stream, &status) != 0 || !(S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode)))
        return {};
    const std::string path = "/dev/fd/" + std::to_string(stream);
    return FileDescriptor(::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

bool takesMore(int descriptor) {
    pollfd state{descriptor, POLLOUT, 0};
    return ::poll(&state, 1, 0) > 0;
}

} // namespace

LogWriter::LogWriter(int stream) : own(openedAgain(stream)), descriptor(own ? own.get() : stream) {}

void LogWriter::write(std::string_view line) {
    const std::lock_guard lock(mutex);
    if (isOver)
        return;
    // First makes room, since the reader may have read on.
    writeWhatFits();
    if (dropped == 0)
        keep(line);
    else
        ++dropped;
    writeWhatFits();
    if (dropped > 0 && waiting.empty()) {
        keep("Lines of this log were dropped, as nobody read them: " + std::to_string(dropped)
             + ".");
        dropped = 0;
        writeWhatFits();
    }
}

void LogWriter::keep(std::string_view line) {
    if (waiting.size() + line.size() >= mostWaiting) {
        ++dropped;
        return;
    }
    waiting += line;
    waiting += '\n';
}

void LogWriter::writeWhatFits() {
    while (!waiting.empty() && takesMore(descriptor)) {
        const std::size_t size = std::min(waiting.size(), pieceSize);
        const ssize_t count = ::write(descriptor, waiting.data(), size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0) {
            isOver = errno == EPIPE;
            return;
        }
        waiting.erase(0, static_cast<std::size_t>(count));
    }
}

} // namespace tidemark
