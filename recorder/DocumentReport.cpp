#include "recorder/DocumentReport.h"

#include "app/model/RecorderRuns.h"
#include "app/preferences/JsonPreferences.h"
#include "core/activity/SystemActivityStore.h"
#include "core/base/DocumentVersion.h"
#include "core/base/Documents.h"
#include "core/growth/StorageHistoryStore.h"
#include "core/journal/JournalStore.h"
#include "core/memory/MemoryHistoryStore.h"
#include "core/storage/MeasurementCache.h"
#include "recorder/OwnDocuments.h"
#include "recorder/PublicText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tidemark {

namespace {

using Path = std::filesystem::path;

/// Reads a document with the class that uses it. `read` throws `Error` when that fails.
struct Reader {
    /// The name of the document.
    std::string_view name;
    void (*read)(const Path& document);
};

constexpr auto readers = std::to_array<Reader>({
    {"journal.json", [](const Path& file) { JournalStore(file).load(); }},
    {"system-activity.json", [](const Path& file) { SystemActivityStore::read(file); }},
    {"memory-history.json", [](const Path& file) { MemoryHistoryStore(file).load(); }},
    {"storage-measurements.json", [](const Path& file) { readDocument<MeasurementRecords>(file); }},
    {"storage-history.json", [](const Path& file) { StorageHistoryStore::read(file); }},
    {"recorder-runs.json", [](const Path& file) { RecorderRuns::read(file); }},
    {"settings.json",
     [](const Path& file) {
         const JsonPreferences settings(file, JsonPreferences::Opening::toRead);
         if (const auto& problem = settings.loadingProblem())
             throw Error(*problem);
     }},
});

std::string octal(mode_t mode) {
    std::array<char, 8> digits{};
    std::snprintf(digits.data(), digits.size(), "%04o", static_cast<unsigned>(mode & 07777));
    return digits.data();
}

/// Absent where there is nothing.
std::optional<DocumentReport> reportOn(const std::string& name, const Path& path) {
    struct stat status{};
    DocumentReport report;
    report.name = name;
    if (::stat(path.c_str(), &status) != 0)
        // A link that leads nowhere is reported by its name alone.
        return ::lstat(path.c_str(), &status) == 0 ? std::optional(report) : std::nullopt;
    report.mode = octal(status.st_mode);
    report.isOwn = status.st_uid == ::geteuid();
    if (S_ISREG(status.st_mode)) {
        report.bytes = status.st_size;
        report.written = Date::fromUnix(static_cast<double>(status.st_mtime));
    }
    // Files are replaced, so that only their folder must be writable.
    if (S_ISDIR(status.st_mode)
        && ::faccessat(AT_FDCWD, path.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
        report.problem = "The " + name + " can't be written: " + std::strerror(errno) + ".";
    return report;
}

std::optional<std::int64_t> versionOf(const Path& document) {
    try {
        const auto bytes = readDocumentBytes(document);
        return bytes ? documentVersion(*bytes) : std::nullopt;
    } catch (const Error&) {
        // `problemOf` reports the failure.
        return std::nullopt;
    }
}

std::optional<std::string> problemOf(const Path& document, const std::vector<std::string>& names) {
    const auto* reader = std::ranges::find(readers, document.filename().native(), &Reader::name);
    if (reader == readers.end())
        return std::nullopt;
    try {
        reader->read(document);
        return std::nullopt;
    } catch (const Error& error) {
        return publicText::of(error.what(), names);
    }
}

} // namespace

std::vector<DocumentReport> documentReports(const RecorderPlaces& places,
                                            const std::vector<std::string>& names) {
    std::vector<DocumentReport> reports;
    const auto addFolder = [&](const char* name, const Path& folder) {
        if (auto report = reportOn(name, folder))
            reports.push_back(*std::move(report));
    };
    const auto addDocuments = [&](const Path& folder, const auto& documents) {
        for (const auto& document : documents) {
            const Path path = folder / document.name;
            auto report = reportOn(std::string(document.name), path);
            if (!report)
                continue;
            if (!document.versionKey.empty())
                report->version = versionOf(path);
            report->problem = problemOf(path, names);
            reports.push_back(*std::move(report));
        }
    };
    const Path settings = places.settings.parent_path();
    addFolder("data folder", places.files.directory);
    addDocuments(places.files.directory, ownDocuments::ofData);
    addFolder("contents of clips", places.files.directory / "memory-payloads");
    addFolder("settings folder", settings);
    addDocuments(settings, ownDocuments::ofSettings);
    for (const Path& socket : places.sockets)
        addFolder("socket", socket);
    return reports;
}

} // namespace tidemark
