#include "platform/linux/DownloadOrigins.h"

#include "core/base/Error.h"
#include "core/base/Text.h"
#include "core/history/ReportProcess.h"

#include <QStandardPaths>
#include <array>
#include <optional>
#include <ranges>

#include <sys/xattr.h>

namespace tidemark {

namespace {

constexpr const char* metadataKey = "metadata::download-uri";
/// Seconds from SIGTERM, after `timeLimit`, until a `gio` that has not ended is killed.
constexpr double grace = 0.2;
constexpr std::size_t mostOutput = std::size_t{16} * 1024;

std::optional<std::string> attribute(const std::filesystem::path& file, const char* name) {
    std::array<char, 4096> value{};
    const ssize_t size = ::lgetxattr(file.c_str(), name, value.data(), value.size());
    if (size <= 0)
        return std::nullopt;
    return std::string(trimmed({value.data(), static_cast<std::size_t>(size)}));
}

} // namespace

std::filesystem::path DownloadOrigins::findGio() {
    return QStandardPaths::findExecutable(QStringLiteral("gio")).toStdString();
}

std::vector<std::string> DownloadOrigins::inAttributes(const std::filesystem::path& file) {
    std::vector<std::string> origins;
    for (const char* name : {"user.xdg.origin.url", "user.xdg.referrer.url"})
        if (auto value = attribute(file, name))
            origins.push_back(*std::move(value));
    return origins;
}

std::vector<std::string> DownloadOrigins::inDesktopMetadata(const std::filesystem::path& file) {
    if (gio.empty() || failures >= mostFailures || !hasMetadata())
        return {};
    try {
        ReportProcess process(gio, {"info", "-a", metadataKey, file.native()}, timeLimit, grace);
        const std::string output = process.readOutput(mostOutput);
        if (process.succeeded()) {
            failures = 0;
            return inOutput(output);
        }
    } catch (const Error&) {
        // It could not be started.
    }
    ++failures;
    return {};
}

std::vector<std::string> DownloadOrigins::inOutput(std::string_view output) {
    const std::string start = std::string(metadataKey) + ":";
    std::vector<std::string> origins;
    for (const auto part : output | std::views::split('\n')) {
        const auto line = trimmed(std::string_view(part.begin(), part.end()));
        if (line.starts_with(start))
            origins.emplace_back(trimmed(line.substr(start.size())));
    }
    return origins;
}

} // namespace tidemark
