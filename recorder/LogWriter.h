#pragma once

#include "core/base/FileDescriptor.h"

#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>

namespace tidemark {

/// Writes lines to a stream, without waiting for the reader of a pipe or terminal that can be
/// opened again with O_NONBLOCK. While a pipe is full or a terminal is stopped, up to `mostWaiting`
/// bytes of lines are queued; further lines are dropped, and a later `write` logs their number.
/// After the reader of a pipe has closed it, nothing more is written; the process must ignore
/// SIGPIPE. Thread-safe.
class LogWriter {
public:
    static constexpr std::size_t mostWaiting = std::size_t{64} * 1024;

    /// `stream` must stay open for the lifetime of this object.
    explicit LogWriter(int stream);

    /// `line` is without a line feed.
    void write(std::string_view line);

private:
    void keep(std::string_view line);
    void writeWhatFits();

    /// The same pipe or terminal, opened with O_NONBLOCK; invalid if that is not possible.
    FileDescriptor own;
    const int descriptor;
    std::mutex mutex;
    std::string waiting;
    std::size_t dropped = 0;
    bool isOver = false;
};

} // namespace tidemark
