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

    /// `urls` are started and are stopped one by one.
    FolderCaptureAccess(ObservationOptions roots, std::vector<std::string> problems,
                        std::vector<std::filesystem::path> started, Stop stopOne)
        : options(std::move(roots)), issues(std::move(problems)), urls(std::move(started)),
          stop(std::move(stopOne)) {}
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
    /// What could not be opened, as sentences for the coverage of the capture.
    std::vector<std::string> issues;

private:
    std::vector<std::filesystem::path> urls;
    Stop stop;
};

} // namespace tidemark
