#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <sqlite3.h>

namespace tidemark {

/// A database of SQLite that another program keeps, read as it stands in its file, without a lock
/// and without writing beside it. What its program has not brought into the file yet is not seen.
/// For the sources of this room alone.
class SqliteFile {
public:
    struct EndStatement {
        void operator()(sqlite3_stmt* statement) const { ::sqlite3_finalize(statement); }
    };
    using Statement = std::unique_ptr<sqlite3_stmt, EndStatement>;

    /// `steps` is how many steps of SQLite's virtual machine one question may take before it is
    /// broken off.
    SqliteFile(const std::string& path, int steps);

    /// Null when the file can't be read or has no such tables.
    Statement prepare(const char* question) const;

private:
    struct Close {
        void operator()(sqlite3* database) const { ::sqlite3_close(database); }
    };

    std::unique_ptr<sqlite3, Close> database;
};

/// The bytes in a column of the row that `statement` stands at, valid until its next step.
std::string_view bytesAt(sqlite3_stmt* statement, int column);

} // namespace tidemark
