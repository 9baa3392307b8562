#pragma once

#include "core/base/JsonFields.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tidemark {

/// Properties of a volume at one moment; absent where not known.
struct VolumeContext {
    std::string name;
    /// Total capacity in bytes.
    std::optional<std::int64_t> capacity;
    /// Name of the file system format.
    std::optional<std::string> fileSystem;
    /// False for a network file system.
    std::optional<bool> local;
    std::optional<bool> internalDevice;
    std::optional<bool> readOnly;

    bool operator==(const VolumeContext&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"name", &VolumeContext::name, Masked},
            Field{"capacity", &VolumeContext::capacity},
            Field{"fileSystem", &VolumeContext::fileSystem, Shown},
            Field{"local", &VolumeContext::local},
            Field{"internalDevice", &VolumeContext::internalDevice},
            Field{"readOnly", &VolumeContext::readOnly},
        };
    }
};

} // namespace tidemark
