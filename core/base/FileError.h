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
    /// `reason` is the rest of the sentence after the path, with or without a full stop: "is not a
    /// regular file". `code` is an `errno` value, also when no system call failed.
    FileError(std::filesystem::path path, std::string reason, int code = EINVAL);

    /// For a failed system call. After the path, the sentence has `failure`, such as "could not be
    /// read", and the description of the `errno` in `code`.
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
