#pragma once

#include "core/base/FileDescriptor.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tidemark {

/// Reads a pipe to its end without blocking. Destroying it ends the reading. Needs an event loop.
class PipeReader {
public:
    /// How long the writer may take for the first bytes, for the next ones, and in all.
    struct Times {
        std::chrono::milliseconds first;
        std::chrono::milliseconds next;
        std::chrono::milliseconds all;
    };
    /// The bytes, and whether these are all; absent when the writer took too long or reading
    /// failed. May destroy the reader.
    using Finished = std::function<void(std::optional<std::string> bytes, bool isComplete)>;

    /// Stops once there are more than `limit` bytes, and passes on the first `limit`.
    PipeReader(FileDescriptor pipe, std::size_t limit, Times times, Finished finished);

private:
    void readAvailable();
    void finish(std::optional<std::string> bytes, bool isComplete);

    const FileDescriptor pipe;
    const std::size_t limit;
    const Times times;
    Finished finished;
    std::string bytes;
    std::unique_ptr<QSocketNotifier> readable;
    QTimer wait;
    QTimer end;
};

/// Writes bytes to a pipe without blocking, and closes it. Destroying it ends the writing. Needs an
/// event loop. The process must ignore SIGPIPE.
class PipeWriter {
public:
    /// Called when everything was written, and when the writer gave up. May destroy the writer.
    using Finished = std::function<void()>;

    /// Gives up when the reader takes longer than `time` for the next bytes, or closes the pipe.
    PipeWriter(FileDescriptor pipe, std::shared_ptr<const std::string> bytes,
               std::chrono::milliseconds time, Finished finished);

private:
    void writeAvailable();
    void finish();

    FileDescriptor pipe;
    const std::shared_ptr<const std::string> bytes;
    Finished finished;
    std::size_t written = 0;
    std::unique_ptr<QSocketNotifier> writable;
    QTimer wait;
};

} // namespace tidemark
