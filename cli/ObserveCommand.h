#pragma once

#include <filesystem>
#include <vector>

namespace tidemark {

/// `tidemark observe`: one observation of this machine, apart from any stored history.
struct ObserveCommand {
    /// Where nothing is given, the places of the system and of the user's home.
    std::vector<std::filesystem::path> applications;
    std::vector<std::filesystem::path> agents;
    std::vector<std::filesystem::path> daemons;
    std::vector<std::filesystem::path> storage;
    /// Additional sources.
    bool homebrew = false;
    bool diagnostics = false;
    std::vector<std::filesystem::path> configurations;
    /// The file that carries finished measurements from one run to the next; none when empty.
    std::filesystem::path measurements;
    /// The file that gets the snapshot as stored JSON; none when empty.
    std::filesystem::path output;
    /// The snapshot as stored JSON on standard output.
    bool json = false;

    /// Throws `Error` whose text names the file and the reason.
    void run() const;
};

} // namespace tidemark
