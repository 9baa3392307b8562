#pragma once

#include "core/base/JsonFields.h"

#include <optional>
#include <string>

namespace tidemark {

struct OperatingSystemObservation {
    std::string version;
    std::optional<std::string> build;

    /// The version, followed by the build in parentheses when it is known.
    std::string label() const { return build ? version + " (" + *build + ")" : version; }

    /// A build that is known on only one side is not a difference.
    bool differs(const OperatingSystemObservation& other) const {
        return version != other.version || (build && other.build && *build != *other.build);
    }

    bool operator==(const OperatingSystemObservation&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"version", &OperatingSystemObservation::version, Shown},
            Field{"build", &OperatingSystemObservation::build, Shown},
        };
    }
};

} // namespace tidemark
