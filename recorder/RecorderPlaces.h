#pragma once

#include "app/model/AppDataLocation.h"

#include <filesystem>

namespace tidemark {

/// Where the program keeps its things for this user.
struct RecorderPlaces {
    DataFiles files;
    std::filesystem::path settings;
    std::filesystem::path socket;

    /// By the environment of the process.
    static RecorderPlaces current();
};

} // namespace tidemark
