#pragma once

#include <filesystem>

namespace tidemark {

/// `tidemark compare`: what a second observation would add to the history behind a first one.
struct CompareCommand {
    /// Files that each hold one snapshot as stored JSON.
    std::filesystem::path before;
    std::filesystem::path after;
    /// The events as stored JSON instead of a timeline for people.
    bool json = false;

    /// Throws `Error` whose text names the file and the reason.
    void run() const;
};

} // namespace tidemark
