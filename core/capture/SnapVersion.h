#pragma once

#include "core/base/MachineFiles.h"

#include <expected>
#include <optional>
#include <string>
#include <string_view>

/// The version of an installed snap. Each is a file system that is mounted at
/// "/snap/INSTANCE/REVISION", with its description in "meta/snap.yaml", and a link "current" names
/// the revision that runs.
namespace tidemark::SnapVersion {

struct Version {
    std::string version;
    std::string revision;
};

/// Absent when no such snap is mounted or its description can't be read or has no version. An
/// `instance` that is not a plain name is not looked up.
std::optional<Version> read(const MachineFiles& machine, std::string_view instance);

/// The value of "version" in the description; absent when it has none.
std::optional<std::string> versionIn(std::string_view yaml);

} // namespace tidemark::SnapVersion
