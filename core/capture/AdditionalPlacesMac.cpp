#include "core/capture/AdditionalPlaces.h"

namespace tidemark {

namespace {

namespace fs = std::filesystem;

constexpr const char* ofUser[] = {".zshrc",  ".zprofile",     ".zshenv",
                                  ".bashrc", ".bash_profile", ".gitconfig"};

} // namespace

AdditionalPlaces AdditionalPlaces::standard(const fs::path& home) {
    return {.cellars = {"/opt/homebrew/Cellar", "/usr/local/Cellar"},
            .diagnostics = {home / "Library/Logs/DiagnosticReports"}};
}

std::vector<fs::path> AdditionalPlaces::suggestedConfigurations(const fs::path& home) {
    std::vector<fs::path> files;
    std::error_code error;
    for (const char* name : ofUser)
        if (fs::symlink_status(home / name, error).type() == fs::file_type::regular)
            files.push_back(home / name);
    return files;
}

} // namespace tidemark
