#include "core/capture/AdditionalPlaces.h"

namespace tidemark {

namespace {

namespace fs = std::filesystem;

/// Files below the home folder; a login or a shell runs most of them.
constexpr const char* ofUser[] = {
    ".profile",   ".bash_profile",    ".bash_login", ".bashrc",
    ".zprofile",  ".zshrc",           ".zshenv",     ".config/fish/config.fish",
    ".gitconfig", ".pam_environment",
};
/// Single files of the system, and folders whose files are suggested one by one.
constexpr const char* ofSystem[] = {"/etc/crontab", "/etc/anacrontab", "/etc/profile",
                                    "/etc/environment"};
constexpr const char* foldersOfSystem[] = {"/etc/modules-load.d", "/etc/udev/rules.d",
                                           "/etc/profile.d", "/etc/environment.d"};

} // namespace

AdditionalPlaces AdditionalPlaces::standard(const fs::path&) {
    return {.cellars = {"/home/linuxbrew/.linuxbrew/Cellar"},
            .diagnostics = {"/var/crash", "/var/lib/systemd/coredump"}};
}

std::vector<fs::path> AdditionalPlaces::suggestedConfigurations(const fs::path& home) {
    std::vector<fs::path> files;
    std::error_code error;
    const auto add = [&](const fs::path& file) {
        if (fs::symlink_status(file, error).type() == fs::file_type::regular)
            files.push_back(file);
    };
    for (const char* name : ofUser)
        add(home / name);
    for (const char* file : ofSystem)
        add(file);
    for (const char* folder : foldersOfSystem) {
        // A folder that can't be listed offers nothing.
        fs::directory_iterator entries(folder, error);
        for (; !error && entries != fs::directory_iterator(); entries.increment(error))
            add(entries->path());
    }
    return files;
}

} // namespace tidemark
