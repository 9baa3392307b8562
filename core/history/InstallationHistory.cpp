#include "core/history/InstallationHistory.h"

#include "core/base/Files.h"
#include "core/base/Iso8601.h"
#include "core/base/Text.h"
#include "core/history/AptHistory.h"
#include "core/history/InstallationReport.h"
#include "core/history/PackageLogReport.h"
#include "core/history/PacmanLogReport.h"
#include "core/history/ReportProcess.h"
#include "core/history/RotatedLog.h"
#include "core/packages/PacmanDatabase.h"
#include "core/packages/RpmInstallations.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <optional>
#include <span>
#include <unordered_set>

#include <nlohmann/json.hpp>

namespace tidemark::InstallationHistory {

namespace {

constexpr const char* reportKey = "SPInstallHistoryDataType";
constexpr double window = 604'800;
constexpr std::size_t reportLimit = 16'777'216;

constexpr const char* messageOf(ImportError::Kind kind) {
    switch (kind) {
    case ImportError::Kind::reportFailed:
        return "macOS couldn’t provide installation history. Try again; the report may have timed "
               "out or access may be unavailable.";
    case ImportError::Kind::invalidReport:
        return "macOS returned an installation report in an unsupported format. Your history has "
               "not been changed.";
    case ImportError::Kind::tooLarge:
        return "The installation report exceeded the import size limit. Your history has not been "
               "changed.";
    }
    return "";
}

/// The text under `key`; absent when the key is missing or its value is not a text.
std::optional<std::string> textAt(const nlohmann::json& entry, const char* key) {
    const auto found = entry.find(key);
    if (found == entry.end() || !found->is_string())
        return std::nullopt;
    return found->get<std::string>();
}

/// One entry of the report; absent when it has no name or no valid date.
std::optional<InstallationRecord> recordFrom(const nlohmann::json& entry) {
    if (!entry.is_object())
        return std::nullopt;
    InstallationRecord record;
    record.name = trimmed(textAt(entry, "_name").value_or(""));
    const auto date = iso8601Date(textAt(entry, "install_date").value_or(""));
    if (record.name.empty() || !date)
        return std::nullopt;
    record.recordedAt = *date;
    record.version = trimmed(textAt(entry, "install_version").value_or(""));
    record.packageSource = textAt(entry, "package_source").value_or("");
    return record;
}

/// The packages that apt's file of states marks as installed automatically; empty when that file is
/// missing or can't be read.
AptHistory::Packages automaticPackages(const PackageLog& log) {
    try {
        return AptHistory::automaticPackages(readFile(log.states, log.limit));
    } catch (const FileError&) {
        return {};
    }
}

/// Empty when apt has no log or it can't be read; the log of dpkg is enough without it.
std::vector<PackageTransaction> transactionsIn(const PackageLog& log, Date since) {
    try {
        const auto text =
            RotatedLog::read(log.transactions, log.limit, [&](std::string_view older) {
                return AptHistory::beginsBefore(older, since);
            });
        return AptHistory::parse(text, automaticPackages(log));
    } catch (const FileError&) {
        return {};
    }
}

/// Throws `ImportError`.
std::string logText(const std::filesystem::path& log, std::size_t limit,
                    const RotatedLog::ReachesBack& reachesBack) {
    try {
        return RotatedLog::read(log, limit, reachesBack);
    } catch (const FileError& error) {
        throw ImportError(error.code() == EFBIG ? ImportError::Kind::tooLarge
                                                : ImportError::Kind::reportFailed);
    }
}

/// Throws `ImportError`.
std::string limited(std::string report) {
    if (report.size() > reportLimit)
        throw ImportError(ImportError::Kind::tooLarge);
    return report;
}

void sortLatestFirst(std::vector<InstallationRecord>& records) {
    std::ranges::stable_sort(
        records, [](const auto& a, const auto& b) { return a.recordedAt > b.recordedAt; });
}

} // namespace

ImportError::ImportError(Kind kind) : Error(messageOf(kind)), reason(kind) {}

InstallationPreview collect(Date now, const ReportTool& tool) {
    ReportProcess process(tool.path, {reportKey, "-json", "-timeout", "20"}, tool.timeLimit,
                          tool.terminationGrace);
    const std::string report = limited(process.readOutput(reportLimit));
    if (!process.succeeded())
        throw ImportError(ImportError::Kind::reportFailed);
    return parse(report, now + -window, now);
}

InstallationPreview collect(Date now, const PackageLog& log) {
    const Date since = now + -window;
    const std::string text = logText(log.path, log.limit, [&](std::string_view older) {
        return PackageLogReport::beginsBefore(older, since);
    });
    return parse(limited(PackageLogReport::make(text, transactionsIn(log, since), since)), since,
                 now);
}

InstallationPreview collect(Date now, const PacmanLog& log) {
    const Date since = now + -window;
    const std::string text = logText(log.path, log.limit, [&](std::string_view older) {
        return PacmanLogReport::beginsBefore(older, since);
    });
    if (text.empty())
        return parse(InstallationReport().finish(), since, now);
    const auto automatic = PacmanDatabase::dependencies(log.machine);
    return parse(limited(PacmanLogReport::make(text, automatic, since)), since, now);
}

InstallationPreview collect(Date now, const MachineFiles& machine) {
    const Date since = now + -window;
    const auto installations = RpmInstallations::read(machine, since);
    if (!installations)
        throw ImportError(ImportError::Kind::reportFailed);
    InstallationReport report;
    for (const auto& each : *installations)
        report.add(each.package.package, each.package.version, each.date, each.isAutomatic);
    return parse(limited(report.finish()), since, now);
}

InstallationPreview merged(std::vector<InstallationPreview> previews) {
    InstallationPreview all = std::move(previews.at(0));
    for (auto& preview : std::span(previews).subspan(1)) {
        std::ranges::move(preview.records, std::back_inserter(all.records));
        all.skippedRecords += preview.skippedRecords;
        all.outsideWindowRecords += preview.outsideWindowRecords;
    }
    sortLatestFirst(all.records);
    return all;
}

InstallationPreview parse(std::string_view report, Date since, Date through) {
    const auto tree = nlohmann::json::parse(report, nullptr, /*allow_exceptions=*/false);
    if (!tree.is_object() || !tree.contains(reportKey) || !tree[reportKey].is_array())
        throw ImportError(ImportError::Kind::invalidReport);

    InstallationPreview preview;
    preview.since = since;
    preview.through = through;
    std::unordered_set<std::string> seen;
    for (const auto& entry : tree[reportKey]) {
        auto record = recordFrom(entry);
        if (!record) {
            ++preview.skippedRecords;
        } else if (record->recordedAt < since || record->recordedAt > through) {
            ++preview.outsideWindowRecords;
        } else if (seen.insert(record->id()).second) {
            record->importedAt = through;
            preview.records.push_back(std::move(*record));
        }
    }
    sortLatestFirst(preview.records);
    return preview;
}

Event event(const InstallationRecord& record) {
    Event event;
    event.id = record.id();
    event.timestamp = record.recordedAt;
    event.intervalStart = record.recordedAt;
    event.title = record.title();
    event.subtitle = record.version.empty() ? "Version not recorded" : "Version " + record.version;
    event.importance = record.isRoutine() ? Importance::routine : Importance::prominent;
    event.symbol = "clock.badge.checkmark";
    event.installationRecord.emplace(InstallationRecord(record));
    return event;
}

} // namespace tidemark::InstallationHistory
