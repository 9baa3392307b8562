#pragma once

#include "core/base/MachineFiles.h"
#include "core/records/OperatingSystemObservation.h"
#include "core/records/VolumeContext.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

/// Facts of the operating system that the core needs. One source file per system; anything that
/// the system doesn't tell is absent, never guessed.
namespace tidemark::SystemFacts {

/// The home directory of the user that the process runs as, without a slash at its end: `variable`,
/// the value of $HOME, where that is an absolute path, else what the user database says.
std::filesystem::path homeDirectory(const std::optional<std::string>& variable);
/// The same by the environment of the process.
std::filesystem::path homeDirectory();

/// The present version and build of this machine. On Linux the distribution and its version of
/// os-release(5) and the kernel release of uname(2).
OperatingSystemObservation collectOperatingSystem();
/// The same by the files of a machine. Of one elsewhere, no kernel runs whose release could be
/// asked: on Linux it has no build. Absent when it does not say its version.
std::optional<OperatingSystemObservation> readOperatingSystem(const MachineFiles& machine);

/// The volume that holds a path, as free space is compared by.
struct VolumeSpace {
    /// Bytes that an ordinary user may still use.
    std::optional<std::int64_t> freeBytes;
    /// The UUID of the file system.
    std::optional<std::string> volumeID;

    bool operator==(const VolumeSpace&) const = default;
};
VolumeSpace volumeSpace(const std::filesystem::path& path);

/// Whether `path` is the place where a volume is mounted. Absent when the path can't be reached.
std::optional<bool> isMountRoot(const std::filesystem::path& path);

/// What is known of the volume that holds `path`, named by the last component of `path` where it
/// has no name of its own. Absent when the path can't be reached.
std::optional<VolumeContext> readVolumeContext(const std::filesystem::path& path);

} // namespace tidemark::SystemFacts
