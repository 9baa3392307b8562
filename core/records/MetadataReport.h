#pragma once

#include "core/base/JsonFields.h"
#include "core/base/Shared.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// One thing that an additional source observed.
struct ObservedMetadata {
    enum class Kind { homebrew, configuration, diagnostic };

    Kind kind = Kind::homebrew;
    /// Full path; also the record's identity.
    std::string path;
    std::string name;
    /// Size of a configuration file; absent for the other kinds.
    std::optional<std::int64_t> bytes;
    /// Label of a diagnostic report.
    std::optional<std::string> reportType;
    /// The application named in the file name of a diagnostic report.
    std::optional<std::string> inferredApplication;
    /// The value that is compared: installed versions, a digest, or the kind of a report.
    std::string value;

    const std::string& id() const { return path; }

    bool operator==(const ObservedMetadata&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"kind", &ObservedMetadata::kind},
            Field{"path", &ObservedMetadata::path, Private},
            Field{"name", &ObservedMetadata::name, Shown},
            Field{"bytes", &ObservedMetadata::bytes},
            Field{"reportType", &ObservedMetadata::reportType, Shown},
            Field{"inferredApplication", &ObservedMetadata::inferredApplication, Shown},
            Field{"value", &ObservedMetadata::value, Shown},
        };
    }
};

template <>
inline constexpr auto json::rawValues<ObservedMetadata::Kind> =
    std::to_array<json::RawValue<ObservedMetadata::Kind>>({
        {ObservedMetadata::Kind::homebrew, "homebrew"},
        {ObservedMetadata::Kind::configuration, "configuration"},
        {ObservedMetadata::Kind::diagnostic, "diagnostic"},
    });

template <>
inline constexpr bool collectionRecurs<std::vector<ObservedMetadata>> = true;

/// The items that one additional source gave in one capture.
struct MetadataReport {
    /// The path of the source.
    std::string scope;
    /// Sorted by path.
    Shared<std::vector<ObservedMetadata>> items;
    /// True when everything in `scope` was read. Only complete reports are compared.
    bool complete = false;
    /// Why the report is not complete.
    std::optional<std::string> issue;

    bool operator==(const MetadataReport&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"scope", &MetadataReport::scope, Private},
            Field{"items", &MetadataReport::items},
            Field{"complete", &MetadataReport::complete},
            Field{"issue", &MetadataReport::issue, Private},
        };
    }
};

} // namespace tidemark
