#pragma once

#include "core/base/MachineFiles.h"
#include "core/records/OperatingSystemObservation.h"
#include "core/records/VolumeContext.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

/// Facts about the operating system that the core needs. One source file per system. Optional
/// values that the system doesn't report are absent, not guessed.
namespace tidemark::SystemFacts {

/// The home directory of the user that the process runs as, without a slash at its end: `variable`,
/// the value of $HOME, if that is an absolute path, else that in the user database.
std::filesystem::path homeDirectory(const std::optional<std::string>& variable);
/// The home directory by the variable $HOME of this process.
std::filesystem::path homeDirectory();

/// The present version and build of this machine. On Linux the distribution and its version of
/// os-release(5) and the kernel release of uname(2).
OperatingSystemObservation collectOperatingSystem();
/// The same, read from the files of `machine`. On Linux the build is absent for another machine
/// than this one, because its kernel is not running. Absent when the files of another machine
/// have no version.
std::optional<OperatingSystemObservation> readOperatingSystem(const MachineFiles& machine);

/// The free space of a volume, and the volume's identity: only free space of the same volume is
/// compared.
struct VolumeSpace {
    /// Bytes that an unprivileged user can still use.
    std::optional<std::int64_t> freeBytes;
    /// The UUID of the file system.
    std::optional<std::string> volumeID;

    bool operator==(const VolumeSpace&) const = default;
};
VolumeSpace volumeSpace(const std::filesystem::path& path);

/// Whether `path` is a mount point. Absent when the system does not say so.
std::optional<bool> isMountRoot(const std::filesystem::path& path);

/// Properties of the volume that contains `path`. A volume without a name gets the last component
/// of `path`. Absent when the status of the path can't be read.
std::optional<VolumeContext> readVolumeContext(const std::filesystem::path& path);

} // namespace tidemark::SystemFacts
