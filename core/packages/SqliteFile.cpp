#include "core/packages/SqliteFile.h"

#include <array>
#include <cstdio>

namespace tidemark {

namespace {

/// Larger values are refused. The largest real one, the header of a kernel with all its modules,
/// has about 2 MB.
constexpr int largestValue = 64 << 20;

/// Returns "file:…?immutable=1". Without this parameter, SQLite can't read a database with a
/// write-ahead log unless it has permission to write beside it.
std::string uriOf(const std::string& path) {
    std::string uri = "file:";
    for (const char character : path) {
        std::array<char, 4> escaped;
        if (character == '%' || character == '?' || character == '#') {
            std::snprintf(escaped.data(), escaped.size(), "%%%02X",
                          static_cast<unsigned char>(character));
            uri += escaped.data();
        } else {
            uri += character;
        }
    }
    return uri + "?immutable=1";
}

} // namespace

SqliteFile::SqliteFile(const std::string& path, int steps) {
    sqlite3* opened = nullptr;
    const int result =
        ::sqlite3_open_v2(uriOf(path).c_str(), &opened,
                          SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
    database.reset(opened);
    if (result != SQLITE_OK) {
        database.reset();
        return;
    }
    // A damaged or hostile file must neither run code of its own nor take all memory.
    ::sqlite3_db_config(opened, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    ::sqlite3_db_config(opened, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    ::sqlite3_limit(opened, SQLITE_LIMIT_LENGTH, largestValue);
    ::sqlite3_progress_handler(opened, steps, [](void*) { return 1; }, nullptr);
}

SqliteFile::Statement SqliteFile::prepare(const char* query) const {
    sqlite3_stmt* statement = nullptr;
    if (!database
        || ::sqlite3_prepare_v2(database.get(), query, -1, &statement, nullptr) != SQLITE_OK)
        return nullptr;
    return Statement(statement);
}

void restart(sqlite3_stmt* statement) {
    ::sqlite3_reset(statement);
    // The limit of steps is compared with this counter of the statement, which goes on counting
    // from one run to the next. This resets it.
    ::sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_VM_STEP, 1);
}

std::string_view bytesAt(sqlite3_stmt* statement, int column) {
    const auto* bytes = static_cast<const char*>(::sqlite3_column_blob(statement, column));
    const auto size = static_cast<std::size_t>(::sqlite3_column_bytes(statement, column));
    return {bytes, size};
}

} // namespace tidemark
