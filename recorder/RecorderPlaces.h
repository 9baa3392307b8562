#pragma once

#include "app/model/DataFiles.h"

#include <filesystem>
#include <vector>

namespace tidemark {

/// The paths of the program's files for this user.
struct RecorderPlaces {
    DataFiles files;
    std::filesystem::path settings;
    /// The sockets of the recorder, in order of preference.
    std::vector<std::filesystem::path> sockets;

    /// The paths for the environment of this process.
    static RecorderPlaces current();
};

} // namespace tidemark
