#pragma once

#include "core/base/Data.h"
#include "core/base/JsonFields.h"

#include <filesystem>
#include <string>
#include <tuple>

namespace tidemark {

/// The path of a file in the options of a command: absolute, since the process that carries the
/// command out may have another working directory, and in the bytes of the system, which need not
/// be text. A request carries it as base64.
struct FilePath {
    Data bytes;

    /// A path as a user gives it to this process. Throws `UsageError` when it is empty,
    /// and `Error` when it is relative to a working directory that was removed.
    static FilePath given(const std::string& word);

    std::filesystem::path path() const { return bytes.bytes; }
    /// Throws `UsageError` unless it is absolute and free of NUL, where the system would cut it.
    void check() const;

    bool operator==(const FilePath&) const = default;
    static constexpr auto fields() { return std::tuple{Field{"bytes", &FilePath::bytes, Private}}; }
};

} // namespace tidemark
