#pragma once

#include "platform/linux/FileStatus.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace tidemark {

/// Keeps the newest of many files, so that the memory does not grow with their number.
class NewestFiles {
public:
    struct File {
        std::filesystem::path path;
        /// Absent when it was not read.
        std::optional<FileStatus> status;
        std::optional<Date> used;
        /// The latest of its dates of creation, modification, use and arrival.
        Date latest;
        /// Whether a file was seen at this path earlier.
        bool isKnown = false;
    };

    explicit NewestFiles(std::size_t most) : most(most) {}

    void add(File file);
    /// Removes all files and returns them, the newest first.
    std::vector<File> take();

private:
    std::size_t most;
    /// A heap with the oldest first.
    std::vector<File> files;
};

} // namespace tidemark
