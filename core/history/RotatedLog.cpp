#include "core/history/RotatedLog.h"

#include "core/base/Files.h"
#include "core/base/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <zlib.h>

namespace tidemark::RotatedLog {

namespace {

/// How many rotated logs Debian keeps by default.
constexpr int oldestAge = 12;
constexpr std::size_t blockSize = 65'536;

[[noreturn]] void fail(const std::filesystem::path& path, int code) {
    throw FileError::ofSystem(path, "could not be read", code);
}

struct LogFile {
    std::filesystem::path path;
    FileDescriptor descriptor;
    std::size_t size = 0;
};

/// Absent when the path does not exist. Does not follow links, and does not block on a FIFO.
std::optional<LogFile> opened(const std::filesystem::path& path) {
    LogFile file{
        path, FileDescriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW))};
    if (!file.descriptor && (errno == ENOENT || errno == ENOTDIR))
        return std::nullopt;
    struct stat status{};
    if (!file.descriptor || ::fstat(file.descriptor.get(), &status) != 0)
        fail(path, errno);
    if (!S_ISREG(status.st_mode))
        fail(path, EINVAL);
    file.size = static_cast<std::size_t>(status.st_size);
    return file;
}

/// The last `limit` bytes of a file, or all of a shorter one.
std::string endOf(const LogFile& file, std::size_t limit) {
    std::string bytes(std::min(file.size, limit), '\0');
    const auto start = static_cast<off_t>(file.size - bytes.size());
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count = ::pread(file.descriptor.get(), bytes.data() + filled,
                                      bytes.size() - filled, start + static_cast<off_t>(filled));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            fail(file.path, errno);
        if (count == 0)
            break;
        filled += static_cast<std::size_t>(count);
    }
    bytes.resize(filled);
    return bytes;
}

struct CloseArchive {
    void operator()(gzFile archive) const { ::gzclose_r(archive); }
};

/// The content of a gzip file, of at most `limit` bytes. The compressed size is limited as well,
/// because a very long file can have little or no content.
std::string unpacked(LogFile file, std::size_t limit) {
    if (file.size > limit)
        fail(file.path, EFBIG);
    std::unique_ptr<gzFile_s, CloseArchive> archive(::gzdopen(file.descriptor.get(), "rb"));
    if (!archive)
        fail(file.path, ENOMEM);
    // `gzclose_r` closes the descriptor.
    static_cast<void>(file.descriptor.release());
    std::string bytes;
    std::array<char, blockSize> block{};
    while (const int count = ::gzread(archive.get(), block.data(), blockSize)) {
        if (count < 0)
            fail(file.path, EIO);
        bytes.append(block.data(), static_cast<std::size_t>(count));
        if (bytes.size() > limit)
            fail(file.path, EFBIG);
    }
    // Only `gzclose_r` reports that an archive is truncated.
    if (::gzclose_r(archive.release()) != Z_OK)
        fail(file.path, EIO);
    return bytes;
}

/// `text` without an incomplete last line, which is still being written, and, if `fromMiddle`,
/// without its first line.
std::string wholeLines(std::string text, bool fromMiddle) {
    text.erase(text.rfind('\n') + 1);
    if (fromMiddle)
        text.erase(0, text.find('\n') + 1);
    return text;
}

/// Absent when there is no log of that age.
std::optional<std::string> ofAge(const std::filesystem::path& log, int age, std::size_t limit,
                                 const ReachesBack& reachesBack) {
    std::filesystem::path path = log;
    if (age > 0)
        path += "." + std::to_string(age);
    if (const auto file = opened(path)) {
        const bool isWhole = file->size <= limit;
        std::string text = wholeLines(endOf(*file, limit), !isWhole);
        if (!isWhole && !reachesBack(text))
            fail(path, EFBIG);
        return text;
    }
    path += ".gz";
    auto file = age > 0 ? opened(path) : std::nullopt;
    if (!file)
        return std::nullopt;
    return wholeLines(unpacked(*std::move(file), limit), false);
}

} // namespace

std::string read(const std::filesystem::path& log, std::size_t limit,
                 const ReachesBack& reachesBack) {
    std::string text;
    for (int age = 0; age <= oldestAge && !reachesBack(text); ++age) {
        const auto older = ofAge(log, age, limit - text.size(), reachesBack);
        // The present log may be missing for a moment, just after it was rotated.
        if (!older && age > 0)
            break;
        text.insert(0, older.value_or(""));
    }
    return text;
}

} // namespace tidemark::RotatedLog
