#include "recorder/Diagnosis.h"

#include "core/base/Text.h"
#include "recorder/Columns.h"
#include "recorder/HistoryTime.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace tidemark::diagnosis {

namespace {

/// A journal of the largest size and the copy that replaces it may not fit into fewer free bytes.
constexpr std::int64_t littleSpace = 200'000'000;
constexpr std::size_t labelWidth = 26;
constexpr double allowedClockError = 60;

void heading(std::string& out, const char* title) {
    out += std::string(out.empty() ? "" : "\n") + title + "\n";
}

void line(std::string& out, const std::string& label, const std::string& value) {
    const auto used = columns(label);
    out += "  " + oneLine(label) + std::string(used < labelWidth ? labelWidth - used : 1, ' ')
           + oneLine(value) + "\n";
}

std::string offsetText(std::int64_t seconds) {
    char text[32];
    const auto minutes = std::abs(seconds) / 60;
    std::snprintf(text, sizeof text, "UTC%c%02d:%02d", seconds < 0 ? '-' : '+',
                  static_cast<int>(minutes / 60), static_cast<int>(minutes % 60));
    return text;
}

bool isOpenToOthers(const DocumentReport& document) {
    return document.mode.size() == 4 && !document.mode.ends_with("00");
}

std::string described(const DocumentReport& document) {
    std::string text =
        document.mode.empty() ? "a link that leads nowhere" : "mode " + document.mode;
    if (!document.isOwn)
        text += ", of another user";
    if (document.bytes)
        text += ", " + byteString(*document.bytes);
    if (document.version)
        text += ", version " + std::to_string(*document.version);
    if (document.written)
        text += ", written " + historyTime::moment(document.written);
    return text;
}

void addProgram(std::string& out, const Diagnosis& diagnosis) {
    heading(out, "Program");
    line(out, "Version", diagnosis.version + ", " + diagnosis.toolkit);
    line(out, "System", diagnosis.system.label());
    line(out, "Clock",
         historyTime::moment(diagnosis.clock) + " " + offsetText(diagnosis.secondsEastOfUTC));
    if (diagnosis.freeBytes)
        line(out, "Free space", byteString(*diagnosis.freeBytes));
}

void addRecorder(std::string& out, const Diagnosis& diagnosis) {
    const auto& recorder = diagnosis.recorder;
    heading(out, "Recorder");
    line(out, "State", recorder.activity);
    line(out, "Service", diagnosis.service);
    line(out, "Schedule", recorder.schedule);
    line(out, "Last capture", historyTime::moment(recorder.lastCapture, "None yet"));
    line(out, "Next capture", nextCaptureText(recorder));
    line(out, "Captures, events, folders",
         std::to_string(recorder.snapshots) + ", " + std::to_string(recorder.events) + ", "
             + std::to_string(recorder.folders));
}

void addSources(std::string& out, const Diagnosis& diagnosis) {
    heading(out, "Sources");
    if (!diagnosis.recorder.running)
        line(out, "Live sources", "Only a running recorder observes them.");
    for (const auto& monitor : diagnosis.recorder.monitors)
        line(out, monitor.name, monitor.text);
    for (const auto& collector : diagnosis.collectors)
        line(out, collector.name, collector.text);
    for (const auto& issue : diagnosis.issues)
        line(out, "Not read", issue);
    for (const auto& setting : diagnosis.settings)
        line(out, setting.key,
             setting.value + (setting.notAvailable ? ". " + *setting.notAvailable : ""));
}

} // namespace

std::vector<MonitorStatus> collectors(const Snapshot& snapshot) {
    const auto in = [](std::size_t found, std::size_t folders) {
        return std::to_string(found) + " in " + std::to_string(folders)
               + (folders == 1 ? " folder" : " folders");
    };
    const auto& coverage = snapshot.coverage;
    std::vector<MonitorStatus> all{
        {"Applications", in(snapshot.applications->size(), coverage.applicationRoots->size())},
        {"Background services",
         in(snapshot.backgroundItems->size(), coverage.backgroundRoots->size())},
        {"Measured sizes", std::to_string(snapshot.folders.size())},
    };
    for (const auto& report : snapshot.additionalReports.value_or(std::vector<MetadataReport>{}))
        all.push_back({"Additional source", std::to_string(report.items->size()) + " found"
                                                + (report.complete ? "" : ", not complete")});
    return all;
}

std::vector<std::string> findProblems(const Diagnosis& diagnosis) {
    std::vector<std::string> problems;
    const auto add = [&](std::string problem) {
        if (std::ranges::find(problems, problem) == problems.end())
            problems.push_back(std::move(problem));
    };
    for (const auto& problem : diagnosis.recorder.problems)
        add(problem);
    for (const auto& document : diagnosis.documents) {
        if (document.problem)
            add(*document.problem);
        if (isOpenToOthers(document))
            add("Others can reach this: " + document.name + ", mode " + document.mode + ".");
        if (!document.isOwn)
            add("This belongs to another user: " + document.name + ".");
    }
    if (diagnosis.freeBytes && *diagnosis.freeBytes < littleSpace)
        add("There is hardly any free space: " + byteString(*diagnosis.freeBytes) + ".");
    const auto latest = diagnosis.latestCapture;
    if (latest && *latest - diagnosis.clock > allowedClockError)
        add("The clock was set back: there are captures dated up to " + historyTime::moment(latest)
            + ", in the future.");
    return problems;
}

std::string text(const Diagnosis& diagnosis) {
    std::string out;
    addProgram(out, diagnosis);
    addRecorder(out, diagnosis);
    addSources(out, diagnosis);
    heading(out, "Services of the system");
    for (const auto& service : diagnosis.services)
        line(out, service.name, service.state + " (" + service.use + ")");
    heading(out, "Files");
    for (const auto& document : diagnosis.documents)
        line(out, document.name, described(document));
    if (diagnosis.documents.empty())
        out += "  None yet.\n";
    heading(out, "Problems");
    for (const auto& problem : diagnosis.problems)
        out += "  " + oneLine(problem) + "\n";
    if (diagnosis.problems.empty())
        out += "  None was found.\n";
    return out;
}

} // namespace tidemark::diagnosis
