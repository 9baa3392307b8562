#include "core/history/HistoryExport.h"

#include "core/base/Files.h"
#include "core/base/Iso8601.h"
#include "core/base/JsonEncoder.h"
#include "core/base/Text.h"
#include "core/history/PrivateDetails.h"

#include <array>
#include <cerrno>

#include <nlohmann/json.hpp>
#include <sys/stat.h>

namespace tidemark {

namespace {

using Json = nlohmann::json;

constexpr int indentation = 2;

constexpr auto header = std::to_array<std::string_view>({
    "Observed At (UTC)",
    "Interval Start (UTC)",
    "Category",
    "Title",
    "Details",
    "Path",
    "Identifier",
    "Importance",
    "Mode",
    "Structured Details (JSON)",
});

/// The keys of an event under the first cells of the header.
constexpr auto cellKeys = std::to_array<std::string_view>({
    "timestamp",
    "intervalStart",
    "category",
    "title",
    "subtitle",
    "path",
    "identifier",
    "importance",
});

/// An event as it leaves the program. It goes by way of its JSON, so that a field that a record
/// gains one day is cleaned like all others, as its description says.
Json cleanedEvent(const Event& event, bool includePrivateDetails) {
    auto tree = Json::parse(json::encoded(event, json::JsonWriter::DateForm::iso8601));
    const PrivateDetails details(tree, includePrivateDetails);
    return details.cleaned(std::move(tree));
}

/// A spreadsheet would take the cell for a formula and carry it out.
bool looksLikeFormula(std::string_view cell) {
    const std::string_view visible = trimmed(cell);
    return (!visible.empty() && std::string_view("=+-@").contains(visible.front()))
           || (!cell.empty() && std::string_view("\t\r\n").contains(cell.front()));
}

std::string quotedCell(std::string_view cell) {
    std::string quoted = looksLikeFormula(cell) ? "\"'" : "\"";
    for (const char character : cell) {
        if (character == '"')
            quoted += '"';
        quoted += character;
    }
    return quoted + '"';
}

/// Rows of the CSV report, ended by a carriage return and a line feed each.
class RowWriter {
public:
    explicit RowWriter(const HistoryExport::Output& to) : output(to) {}

    void cell(std::string_view text) {
        if (!row.empty())
            row += ',';
        row += quotedCell(text);
    }
    void end() {
        output(row + "\r\n");
        row.clear();
    }

private:
    const HistoryExport::Output& output;
    std::string row;
};

void writeTable(const HistoryExport& report, bool includePrivateDetails,
                const HistoryExport::Output& output) {
    RowWriter rows(output);
    for (const std::string_view title : header)
        rows.cell(title);
    rows.end();
    for (const auto& event : report.events) {
        const Json cleaned = cleanedEvent(*event, includePrivateDetails);
        for (const std::string_view key : cellKeys) {
            const auto found = cleaned.find(key);
            const bool isText = found != cleaned.end() && found->is_string();
            rows.cell(isText ? found->get_ref<const std::string&>() : std::string());
        }
        rows.cell(report.mode);
        rows.cell(cleaned.dump());
        rows.end();
    }
}

/// The lines of a pretty-printed value, moved in by two levels.
std::string movedIn(const std::string& lines) {
    std::string text;
    for (const char character : lines) {
        text += character;
        if (character == '\n')
            text.append(static_cast<std::size_t>(2 * indentation), ' ');
    }
    return text;
}

void writeDocument(const HistoryExport& report, bool includePrivateDetails,
                   const HistoryExport::Output& output) {
    const auto date = iso8601Text(report.exportedAt);
    if (!date)
        throw Error("A date outside of the years 0 to 9999 can't be written.");
    const Json rest{{"schemaVersion", 1},
                    {"exportedAt", *date},
                    {"mode", report.mode},
                    {"includesPrivateDetails", includePrivateDetails},
                    {"limitations", HistoryExport::limitations}};
    // The events go out one by one; their key sorts before all others.
    output("{\n  \"events\": [");
    std::string_view separator = "\n    ";
    for (const auto& event : report.events) {
        output(separator);
        output(movedIn(cleanedEvent(*event, includePrivateDetails).dump(indentation)));
        separator = ",\n    ";
    }
    output(report.events.empty() ? "]," : "\n  ],");
    output(std::string_view(rest.dump(indentation)).substr(1));
}

} // namespace

void HistoryExport::write(Format format, bool includePrivateDetails, const Output& output) const {
    if (format == Format::csv)
        writeTable(*this, includePrivateDetails, output);
    else
        writeDocument(*this, includePrivateDetails, output);
}

std::string HistoryExport::data(Format format, bool includePrivateDetails) const {
    std::string text;
    write(format, includePrivateDetails, [&](std::string_view piece) { text += piece; });
    return text;
}

void HistoryExport::save(const std::filesystem::path& path, Format format,
                         bool includePrivateDetails) const {
    // To replace a device, such as /dev/stdout, would take it from the whole system.
    struct stat status{};
    if (::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
        throw FileError(textFromBytes(path.native()) + " is not a regular file.", EINVAL);
    FileReplacement file(path);
    write(format, includePrivateDetails, [&](std::string_view piece) { file.write(piece); });
    file.commit();
}

std::string HistoryExport::fileName(Format format) {
    return "Tidemark-History." + asciiLowercased(rawValue(format));
}

} // namespace tidemark
