#include "recorder/ObservationSummary.h"

#include "core/base/Calendar.h"
#include "core/base/Text.h"
#include "core/presentation/SystemWords.h"
#include "recorder/Columns.h"

#include <algorithm>
#include <cstdio>

namespace tidemark {

namespace {

/// The most children of a folder that are listed, the largest first.
constexpr std::size_t namedParts = 5;

std::string counted(std::size_t count, const std::string& one, const std::string& many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string secondsText(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%7.2f s", seconds);
    return text;
}

std::string padded(const std::string& text, std::size_t width) {
    const std::size_t used = columns(text);
    return used < width ? std::string(width - used, ' ') + text : text;
}

void appendLine(std::string& out, const std::string& label, const std::string& value) {
    out += "  " + label + std::string(18 - std::min<std::size_t>(label.size(), 17), ' ')
           + oneLine(value) + "\n";
}

void appendSize(std::string& out, std::int64_t bytes, const std::string& name,
                const char* indentation) {
    out += indentation + padded(byteString(bytes), 10) + "  " + oneLine(name) + "\n";
}

void appendFolder(std::string& out, const FolderSize& folder) {
    appendSize(out, folder.bytes, folder.path, "  ");
    std::vector<std::pair<std::string, std::int64_t>> parts(folder.breakdown->begin(),
                                                            folder.breakdown->end());
    std::ranges::stable_sort(parts, std::ranges::greater(),
                             [](const auto& part) { return part.second; });
    if (parts.size() > namedParts)
        parts.resize(namedParts);
    for (const auto& [name, bytes] : parts)
        appendSize(out, bytes, name, "      ");
}

void appendList(std::string& out, const std::string& title, const std::vector<std::string>& lines) {
    if (lines.empty())
        return;
    out += "\n" + title + "\n";
    for (const auto& line : lines)
        out += "  " + oneLine(systemWords::shown(line)) + "\n";
}

std::string systemText(const Snapshot& snapshot) {
    return snapshot.operatingSystem ? snapshot.operatingSystem->label() : "Unknown";
}

std::string spaceText(const Snapshot& snapshot) {
    std::string text = snapshot.freeBytes ? byteString(*snapshot.freeBytes) + " free" : "Unknown";
    if (const auto& volume = snapshot.volumeContext) {
        if (volume->capacity)
            text += " of " + byteString(*volume->capacity);
        text += " on " + volume->name;
    }
    return text;
}

} // namespace

std::string observationSummary(const Snapshot& snapshot) {
    std::string out =
        "Observed " + Calendar().format(snapshot.timestamp, "d MMM yyyy, HH:mm:ss") + "\n";
    appendLine(out, "System", systemText(snapshot));
    appendLine(out, "Disk space", spaceText(snapshot));
    appendLine(out, "Applications", std::to_string(snapshot.applications->size()));
    appendLine(out, "Background items", std::to_string(snapshot.backgroundItems->size()));
    if (snapshot.additionalReports) {
        std::size_t items = 0;
        for (const auto& report : *snapshot.additionalReports)
            items += report.items->size();
        appendLine(out, "Further sources",
                   counted(snapshot.additionalReports->size(), "source", "sources") + ", "
                       + counted(items, "item", "items"));
    }
    if (!snapshot.folders.empty()) {
        out += "\nSizes\n";
        for (const auto& folder : snapshot.folders)
            appendFolder(out, *folder);
    }
    std::vector<std::string> issues = snapshot.coverage.issues;
    if (snapshot.additionalReports)
        for (const auto& report : *snapshot.additionalReports)
            if (report.issue)
                issues.push_back(*report.issue);
    appendList(out, "Not seen completely", issues);
    appendList(out, "Notes", snapshot.coverage.notes.value_or(std::vector<std::string>()));
    if (snapshot.scanTimings) {
        out += "\nTime\n";
        for (const auto& timing : *snapshot.scanTimings)
            out += "  " + secondsText(timing.seconds) + "  " + oneLine(timing.name)
                   + (timing.complete ? "" : " (incomplete)") + "\n";
        out += "  " + secondsText(snapshot.captureDuration.value_or(0)) + "  in all\n";
    }
    return out;
}

} // namespace tidemark
