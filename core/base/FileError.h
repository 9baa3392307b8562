#pragma once

#include "core/base/Error.h"

#include <cerrno>
#include <filesystem>
#include <string>
#include <string_view>

namespace tidemark {

/// A file or folder could not be read, written or used. `what()` is one sentence that begins with
/// its path: "/home/me/journal.json could not be read: Permission denied."
class FileError : public Error {
public:
    /// `reason` continues after the path, with or without a full stop: "is not a regular file".
    /// `code` is the `errno` that fits best.
    FileError(std::filesystem::path file, std::string reason, int code = EINVAL);

    /// The system refused a call: `failure`, such as "could not be read", and what `code` means.
    static FileError ofSystem(const std::filesystem::path& file, std::string_view failure,
                              int code);

    const std::filesystem::path& path() const { return where; }
    const std::string& reason() const { return why; }
    int code() const { return number; }

private:
    std::filesystem::path where;
    std::string why;
    int number;
};

} // namespace tidemark
