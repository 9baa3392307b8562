#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

/// An installed package that owns a file.
struct PackageOwner {
    std::string package;
    /// As the package manager writes it: "[epoch:]upstream[-revision]".
    std::string version;

    bool operator==(const PackageOwner&) const = default;
};

/// Why a lookup in a database of packages failed.
enum class PackageFailure {
    /// Its format, or the version of its format, is not supported.
    unsupported,
    /// It can't be read, is damaged, or is being written.
    unreadable,
};

/// The owner of a file; none when no package owns it. After a failure the file may have an owner.
using Ownership = std::expected<std::optional<PackageOwner>, PackageFailure>;

/// The version of the program itself, without the epoch and revision that a distribution adds.
std::string_view upstreamVersion(std::string_view version);

} // namespace tidemark
