#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace tidemark::bench {

/// A temporary folder, removed when the benchmark ends.
class Workspace {
public:
    Workspace() {
        std::string name =
            (std::filesystem::temp_directory_path() / "tidemark-bench-XXXXXX").native();
        if (::mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no temporary folder: " + name);
        folder = name;
    }
    ~Workspace() {
        std::error_code error;
        std::filesystem::remove_all(folder, error);
    }
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    std::filesystem::path path() const { return folder; }

private:
    std::filesystem::path folder;
};

} // namespace tidemark::bench
