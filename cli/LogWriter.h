#pragma once

#include "core/base/FileDescriptor.h"

#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>

namespace tidemark {

/// Writes lines to a stream without ever waiting for its reader. Lines that a full pipe or a halted
/// terminal doesn't take wait for the next line, `mostWaiting` bytes of them; further ones are
/// dropped, and their number stands in the log later. Once the reader of a pipe is gone nothing is
/// written any more; the process ignores SIGPIPE, or it ends with the reader. Any thread.
class LogWriter {
public:
    static constexpr std::size_t mostWaiting = std::size_t{64} * 1024;

    /// The stream stays open as long as this lives.
    explicit LogWriter(int stream);

    /// `line` comes without its line feed.
    void write(std::string_view line);

private:
    void keep(std::string_view line);
    void writeWhatFits();

    /// The same pipe or terminal, opened without waiting; invalid where that is not possible.
    FileDescriptor own;
    const int descriptor;
    std::mutex mutex;
    std::string waiting;
    std::size_t dropped = 0;
    bool isOver = false;
};

} // namespace tidemark
