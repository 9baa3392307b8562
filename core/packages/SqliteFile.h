#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <sqlite3.h>

namespace tidemark {

/// An SQLite database of another program. Only the main file is read, without a lock and without
/// creating files beside it: changes that are still in the write-ahead log are not seen. Include
/// this header only in sources of this folder, because it includes the header of SQLite.
class SqliteFile {
public:
    struct EndStatement {
        void operator()(sqlite3_stmt* statement) const { ::sqlite3_finalize(statement); }
    };
    using Statement = std::unique_ptr<sqlite3_stmt, EndStatement>;

    /// A query is aborted after `steps` steps of SQLite's virtual machine.
    SqliteFile(const std::string& path, int steps);

    /// Null when the file can't be read or lacks a table of the query.
    Statement prepare(const char* query) const;

private:
    struct Close {
        void operator()(sqlite3* opened) const { ::sqlite3_close(opened); }
    };

    std::unique_ptr<sqlite3, Close> database;
};

/// Makes a statement ready for the next query.
void restart(sqlite3_stmt* statement);

/// The bytes in a column of the current row, valid until the next step of `statement`.
std::string_view bytesAt(sqlite3_stmt* statement, int column);

} // namespace tidemark
