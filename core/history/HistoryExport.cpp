#include "core/history/HistoryExport.h"

#include "core/base/Files.h"
#include "core/base/JsonEncoder.h"
#include "core/base/Text.h"
#include "core/history/CsvRows.h"
#include "core/history/PrivateDetails.h"

#include <array>

#include <nlohmann/json.hpp>

namespace tidemark {

namespace {

using Json = nlohmann::json;

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

/// The event keys of the first columns.
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

/// The exported form of an event. It is made from the JSON of the event, so that fields added to
/// records later are cleaned by their `Privacy` as well.
Json cleanedEvent(const Event& event, bool includePrivateDetails) {
    auto tree = Json::parse(json::encoded(event, json::JsonWriter::DateForm::iso8601));
    const PrivateDetails details(tree, includePrivateDetails);
    return details.cleaned(std::move(tree));
}

void write(json::JsonWriter& writer, const Json& value) {
    switch (value.type()) {
    case Json::value_t::object:
        writer.beginObject();
        for (const auto& [key, child] : value.items()) {
            writer.key(key);
            write(writer, child);
        }
        return writer.endObject();
    case Json::value_t::array:
        writer.beginArray();
        for (const Json& child : value)
            write(writer, child);
        return writer.endArray();
    case Json::value_t::string:
        return writer.text(value.get_ref<const std::string&>());
    case Json::value_t::boolean:
        return writer.boolean(value.get<bool>());
    case Json::value_t::number_integer:
    case Json::value_t::number_unsigned:
        return writer.integer(value.get<std::int64_t>());
    case Json::value_t::number_float:
        return writer.real(value.get<double>());
    default:
        return writer.null();
    }
}

/// JSON on one line.
std::string written(const Json& value) {
    std::string text;
    json::JsonWriter writer([&](std::string_view piece) { text += piece; });
    write(writer, value);
    writer.finish();
    return text;
}

void writeTable(const HistoryExport& report, bool includePrivateDetails,
                const HistoryExport::Output& output) {
    CsvRows rows(output);
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
        rows.cell(written(cleaned));
        rows.end();
    }
}

void writeDocument(const HistoryExport& report, bool includePrivateDetails,
                   const HistoryExport::Output& output) {
    using json::JsonWriter;
    JsonWriter writer(output, JsonWriter::DateForm::iso8601, JsonWriter::Layout::indented);
    // Keys are in byte order, as in each event.
    writer.beginObject();
    writer.key("events");
    writer.beginArray();
    for (const auto& event : report.events)
        write(writer, cleanedEvent(*event, includePrivateDetails));
    writer.endArray();
    writer.key("exportedAt");
    writer.date(report.exportedAt);
    writer.key("includesPrivateDetails");
    writer.boolean(includePrivateDetails);
    writer.key("limitations");
    writer.text(HistoryExport::limitations);
    writer.key("mode");
    writer.text(report.mode);
    writer.key("schemaVersion");
    writer.integer(1);
    writer.endObject();
    writer.finish();
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
    FileReplacement file(replaceablePath(path));
    write(format, includePrivateDetails, [&](std::string_view piece) { file.write(piece); });
    file.commit();
}

std::string HistoryExport::fileName(Format format) {
    return "Tidemark-History." + asciiLowercased(rawValue(format));
}

} // namespace tidemark
