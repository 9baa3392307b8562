#include "platform/linux/PipeTransfer.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace tidemark {

namespace {

void makeNonBlocking(const FileDescriptor& pipe) {
    ::fcntl(pipe.get(), F_SETFL, ::fcntl(pipe.get(), F_GETFL) | O_NONBLOCK);
}

bool isTemporary(int error) {
    return error == EAGAIN || error == EINTR;
}

/// A notifier must not be destroyed while it calls.
void end(std::unique_ptr<QSocketNotifier>& notifier) {
    if (!notifier)
        return;
    notifier->setEnabled(false);
    notifier->disconnect();
    notifier.release()->deleteLater();
}

} // namespace

PipeReader::PipeReader(FileDescriptor opened, std::size_t limit, Times times, Finished finished)
    : pipe(std::move(opened)), limit(limit), times(times), finished(std::move(finished)),
      readable(std::make_unique<QSocketNotifier>(pipe.get(), QSocketNotifier::Read)) {
    makeNonBlocking(pipe);
    QObject::connect(readable.get(), &QSocketNotifier::activated, [this] { readAvailable(); });
    for (QTimer* timer : {&wait, &end}) {
        timer->setSingleShot(true);
        timer->callOnTimeout([this] { finish(std::nullopt, false); });
    }
    wait.start(times.first);
    end.start(times.all);
}

void PipeReader::readAvailable() {
    std::array<char, 65'536> buffer;
    const auto count = ::read(pipe.get(), buffer.data(), buffer.size());
    if (count < 0 && isTemporary(errno))
        return;
    if (count <= 0)
        return finish(count == 0 ? std::optional(std::move(bytes)) : std::nullopt, true);
    bytes.append(buffer.data(), static_cast<std::size_t>(count));
    if (bytes.size() > limit) {
        bytes.resize(limit);
        return finish(std::move(bytes), false);
    }
    wait.start(times.next);
}

void PipeReader::finish(std::optional<std::string> read, bool isComplete) {
    wait.stop();
    end.stop();
    tidemark::end(readable);
    std::exchange(finished, {})(std::move(read), isComplete);
}

PipeWriter::PipeWriter(FileDescriptor opened, std::shared_ptr<const std::string> bytes,
                       std::chrono::milliseconds time, Finished finished)
    : pipe(std::move(opened)), bytes(std::move(bytes)), finished(std::move(finished)),
      writable(std::make_unique<QSocketNotifier>(pipe.get(), QSocketNotifier::Write)) {
    makeNonBlocking(pipe);
    QObject::connect(writable.get(), &QSocketNotifier::activated, [this] { writeAvailable(); });
    wait.setSingleShot(true);
    wait.callOnTimeout([this] { finish(); });
    wait.start(time);
}

void PipeWriter::writeAvailable() {
    const auto left = bytes->size() - written;
    const auto count = ::write(pipe.get(), bytes->data() + written, left);
    if (count < 0 && isTemporary(errno))
        return;
    if (count < 0)
        return finish();
    written += static_cast<std::size_t>(count);
    if (written == bytes->size())
        return finish();
    wait.start();
}

void PipeWriter::finish() {
    wait.stop();
    end(writable);
    pipe.reset();
    std::exchange(finished, {})();
}

} // namespace tidemark
