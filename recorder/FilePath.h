#pragma once

#include "core/base/Data.h"
#include "core/base/JsonFields.h"

#include <filesystem>
#include <string>
#include <tuple>

namespace tidemark {

/// The path of a file in the options of a command. It is absolute, since the process that carries
/// out the command may have another working directory. Its bytes need not be text, so a request has
/// it as base64.
struct FilePath {
    Data bytes;

    /// Makes it from a word of the command line. Throws `UsageError` when that is empty, and
    /// `Error` when it is relative to a working directory that was removed.
    static FilePath given(const std::string& word);

    std::filesystem::path path() const { return bytes.bytes; }
    /// Throws `UsageError` unless it is absolute and has no NUL, at which the system would cut it.
    void check() const;

    bool operator==(const FilePath&) const = default;
    static constexpr auto fields() { return std::tuple{Field{"bytes", &FilePath::bytes, Private}}; }
};

} // namespace tidemark
