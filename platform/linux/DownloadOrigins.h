#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// Finds out where files were downloaded from. Programs write it into an extended attribute of the
/// file (https://www.freedesktop.org/wiki/CommonExtendedAttributes), or, as some browsers do, into
/// the metadata that the desktop keeps apart, which `gio info` prints. Blocks; one thread at a
/// time.
class DownloadOrigins {
public:
    /// Seconds after which a `gio` that has not ended gets SIGTERM.
    static constexpr double timeLimit = 2;
    /// After so many failures in a row, `gio` is not run any more.
    static constexpr int mostFailures = 3;

    /// `gio` is the path of that program; empty where it is not installed. `gio` is run only while
    /// `hasMetadata` returns true, that is, while the service that keeps the metadata is running;
    /// otherwise `gio` would start that service.
    DownloadOrigins(std::filesystem::path gio, std::function<bool()> hasMetadata)
        : gio(std::move(gio)), hasMetadata(std::move(hasMetadata)) {}

    /// The path of `gio` on this machine.
    static std::filesystem::path findGio();

    /// The URLs in the attributes of the file.
    static std::vector<std::string> inAttributes(const std::filesystem::path& file);
    /// The URL in the metadata of the desktop.
    std::vector<std::string> inDesktopMetadata(const std::filesystem::path& file);

    /// The URL in the output of `gio info`.
    static std::vector<std::string> inOutput(std::string_view output);

private:
    const std::filesystem::path gio;
    const std::function<bool()> hasMetadata;
    int failures = 0;
};

} // namespace tidemark
