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

/// Why a database of packages does not answer.
enum class PackageFailure {
    /// Its form, or the version of its form, is none that is read here.
    unsupported,
    /// It can't be read, is damaged, or is being changed at this moment.
    unreadable,
};

/// The owner of a file; none when no package owns it. A failure is neither: the file may be owned.
using Ownership = std::expected<std::optional<PackageOwner>, PackageFailure>;

/// The version of the program itself, without the epoch and revision that a distribution adds.
std::string_view upstreamVersion(std::string_view version);

} // namespace tidemark
