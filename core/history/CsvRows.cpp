#include "core/history/CsvRows.h"

#include "core/base/Text.h"

namespace tidemark {

namespace {

/// True for a cell that a spreadsheet would evaluate as a formula.
bool looksLikeFormula(std::string_view cell) {
    const std::string_view visible = trimmed(cell);
    return (!visible.empty() && std::string_view("=+-@").contains(visible.front()))
           || (!cell.empty() && std::string_view("\t\r\n").contains(cell.front()));
}

std::string quotedCell(std::string_view text) {
    // A cell may have several lines.
    const std::string cell = printable(text, "\t\r\n");
    std::string quoted = looksLikeFormula(cell) ? "\"'" : "\"";
    for (const char character : cell) {
        if (character == '"')
            quoted += '"';
        quoted += character;
    }
    return quoted + '"';
}

} // namespace

void CsvRows::cell(std::string_view text) {
    if (!row.empty())
        row += ',';
    row += quotedCell(text);
}

void CsvRows::end() {
    row += "\r\n";
    output(row);
    row.clear();
}

} // namespace tidemark
