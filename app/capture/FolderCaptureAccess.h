#pragma once

#include "core/capture/ObservationOptions.h"

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tidemark {

/// The folders that one capture may read, open until `finish` or the end of this object.
class FolderCaptureAccess {
public:
    using Stop = std::function<void(const std::filesystem::path&)>;

    /// `urls` are the paths of the folders that were opened for reading
    /// (`BookmarkOperations::start`); `finish` calls `stop` with each of them.
    FolderCaptureAccess(ObservationOptions options, std::vector<std::string> issues,
                        std::vector<std::filesystem::path> urls, Stop stop)
        : options(std::move(options)), issues(std::move(issues)), urls(std::move(urls)),
          stop(std::move(stop)) {}
    FolderCaptureAccess(FolderCaptureAccess&& other) noexcept
        : options(std::move(other.options)), issues(std::move(other.issues)),
          urls(std::exchange(other.urls, {})), stop(std::move(other.stop)) {}
    ~FolderCaptureAccess() { finish(); }

    /// A second call does nothing.
    void finish() {
        for (const auto& url : std::exchange(urls, {}))
            stop(url);
    }

    ObservationOptions options;
    /// What limits the capture, as sentences for its coverage: folders that could not be opened,
    /// purposes for which no folder is open, and renewed bookmarks that could not be saved.
    std::vector<std::string> issues;

private:
    std::vector<std::filesystem::path> urls;
    Stop stop;
};

} // namespace tidemark
