#pragma once

#include "core/records/VolumeContext.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace tidemark {

/// Notices when volumes are mounted and unmounted, for its lifetime. Main thread only; does not
/// block.
///
/// It is created with a function `didChange`, which it calls from the event loop, never from its
/// constructor or destructor, after each change of the mounted volumes.
class VolumeSource {
public:
    virtual ~VolumeSource() = default;
};

/// Functions that read the mounted volumes. Thread-safe. They may block: `details` for ever, if the
/// server of the volume does not respond.
struct VolumeReading {
    /// The mount points of the volumes that a user recognises as such: not those that belong to the
    /// system, nor hidden ones. Absent when they can't be listed.
    std::function<std::optional<std::vector<std::filesystem::path>>()> list;
    /// Absent when the volume can't be read.
    std::function<std::optional<VolumeContext>(const std::filesystem::path&)> details;
};

} // namespace tidemark
