#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tidemark::test {

/// A folder for one test, with a canonical path. Removed at the end, even if the test took away
/// permissions in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return folder; }
    std::filesystem::path operator/(std::string_view name) const { return folder / name; }

    /// Writes a file below the folder and creates missing parents.
    std::filesystem::path write(std::string_view name, std::string_view bytes) const;
    /// Creates a folder below the folder, with missing parents.
    std::filesystem::path makeFolder(std::string_view name) const;

private:
    std::filesystem::path folder;
};

std::string contents(const std::filesystem::path& file);
/// The permission bits of a file, such as 0600.
unsigned modeOf(const std::filesystem::path& file);
/// The names in a folder, sorted, with a space between them.
std::string namesIn(const std::filesystem::path& folder);

} // namespace tidemark::test
