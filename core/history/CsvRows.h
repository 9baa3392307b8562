#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tidemark {

/// Writes a table as CSV (RFC 4180), with every cell quoted. A cell that a spreadsheet would
/// evaluate as a formula begins with an apostrophe, and characters that are not printable, except
/// tabs and line breaks, are replaced by U+FFFD.
class CsvRows {
public:
    /// Is called with each row, ended by a carriage return and a line feed. Must outlive this
    /// object.
    using Output = std::function<void(std::string_view)>;
    explicit CsvRows(const Output& output) : output(output) {}

    /// Adds a cell to the present row.
    void cell(std::string_view text);
    /// Ends the present row.
    void end();

private:
    const Output& output;
    std::string row;
};

} // namespace tidemark
