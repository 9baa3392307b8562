#include "core/growth/StorageHistoryExport.h"

#include "core/base/Iso8601.h"
#include "core/base/JsonEncoder.h"
#include "core/history/CsvRows.h"

namespace tidemark::storageHistoryExport {

namespace {

struct SizeRow {
    Date measuredAt;
    std::string kind;
    std::string name;
    std::optional<std::string> path;
    std::optional<std::string> volume;
    std::int64_t bytes = 0;

    static constexpr auto fields() {
        return std::tuple{
            Field{"measuredAt", &SizeRow::measuredAt}, Field{"kind", &SizeRow::kind, Shown},
            Field{"name", &SizeRow::name, Shown},      Field{"path", &SizeRow::path, Private},
            Field{"volume", &SizeRow::volume, Masked}, Field{"bytes", &SizeRow::bytes},
        };
    }
};

std::vector<SizeRow> rowsOf(const StorageHistory& history, bool includePrivateDetails) {
    std::vector<SizeRow> rows;
    for (const auto& series : history.series)
        for (std::size_t i = 0; i < series->bytes.size(); ++i) {
            SizeRow row{.measuredAt = series->measuredAt[i],
                        .kind = std::string(rawValue(series->kind)),
                        .name = series->name,
                        .path = {},
                        .volume = {},
                        .bytes = series->bytes[i]};
            if (includePrivateDetails && !series->path.empty())
                row.path = series->path;
            if (includePrivateDetails)
                row.volume = series->volumeName;
            rows.push_back(std::move(row));
        }
    return rows;
}

std::string tableOf(const std::vector<SizeRow>& sizes) {
    std::string text;
    const CsvRows::Output output = [&](std::string_view row) { text += row; };
    CsvRows rows(output);
    for (const char* title : {"Measured At (UTC)", "Kind", "Name", "Path", "Volume", "Bytes"})
        rows.cell(title);
    rows.end();
    for (const auto& size : sizes) {
        rows.cell(iso8601Text(size.measuredAt).value_or(""));
        rows.cell(size.kind);
        rows.cell(size.name);
        rows.cell(size.path.value_or(""));
        rows.cell(size.volume.value_or(""));
        rows.cell(std::to_string(size.bytes));
        rows.end();
    }
    return text;
}

} // namespace

std::string data(const StorageHistory& history, HistoryExport::Format format,
                 bool includePrivateDetails) {
    const auto rows = rowsOf(history, includePrivateDetails);
    if (format == HistoryExport::Format::csv)
        return tableOf(rows);
    return json::encoded(rows, json::JsonWriter::DateForm::iso8601) + "\n";
}

} // namespace tidemark::storageHistoryExport
