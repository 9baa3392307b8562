#pragma once

#include "app/model/DataFiles.h"

#include <filesystem>
#include <vector>

namespace tidemark {

/// Where the program keeps its things for this user.
struct RecorderPlaces {
    DataFiles files;
    std::filesystem::path settings;
    /// Where the recorder may be reached, best first.
    std::vector<std::filesystem::path> sockets;

    /// By the environment of the process.
    static RecorderPlaces current();
};

} // namespace tidemark
