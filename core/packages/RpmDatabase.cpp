#include "core/packages/RpmDatabase.h"

#include "core/base/Text.h"
#include "core/packages/ListedPackages.h"
#include "core/packages/RpmHeader.h"
#include "core/packages/SqliteFile.h"

#include <cerrno>
#include <unordered_map>

namespace tidemark::RpmDatabase {

namespace {

constexpr const char* folders[] = {"/usr/lib/sysimage/rpm", "/var/lib/rpm"};
constexpr const char* sqliteFile = "/rpmdb.sqlite";
constexpr const char* olderFiles[] = {"/Packages.db", "/Packages"};
/// The most steps of SQLite's virtual machine for one query. In an undamaged database it takes some
/// dozens.
constexpr int mostSteps = 100'000;

/// The open database and its prepared queries.
struct Connection {
    SqliteFile database;
    SqliteFile::Statement files;
    SqliteFile::Statement package;

    explicit Connection(const std::string& path)
        : database(path, mostSteps),
          files(database.prepare("SELECT hnum, idx FROM Basenames WHERE key = ?")),
          package(database.prepare("SELECT blob FROM Packages WHERE hnum = ?")) {}

    bool isUsable() const { return files && package; }
};

struct FilePlace {
    sqlite3_int64 package;
    std::size_t number;
};

class Reader : public PackageDatabase {
public:
    Reader(const MachineFiles& files, std::string folder)
        : machine(files), path(std::move(folder) + sqliteFile), merged(files), start(state()) {}

    Ownership owner(const std::string& file) override {
        if (const auto known = answers.find(file); known != answers.end())
            return known->second;
        auto found = lookUp(file);
        // The database was written after it was opened, so the result may be inconsistent.
        if (state() != start)
            return std::unexpected(PackageFailure::unreadable);
        answers.emplace(file, found);
        return found;
    }

    void rest() override { connection.reset(); }

private:
    DatabaseState state() const { return stateOf(machine, {path, path + "-wal"}); }

    /// Whether the write-ahead log has changes that may not be in the file, as while rpm is
    /// running. When rpm ends, it leaves an empty log.
    bool hasUnwritten() const {
        return start.back() ? start.back()->bytes > 0 : start.back().error() != ENOENT;
    }

    Ownership lookUp(const std::string& file) {
        if (hasUnwritten())
            return std::unexpected(PackageFailure::unreadable);
        if (!connection)
            connection.emplace(machine.outside(machine.canonical(path)).native());
        if (!connection->isUsable())
            return std::unexpected(PackageFailure::unreadable);
        const auto places = placesOf(lastPathComponent(file));
        if (!places)
            return std::unexpected(PackageFailure::unreadable);
        for (const FilePlace& place : *places) {
            const auto owner = ownerAt(place, file);
            if (!owner || *owner)
                return owner;
        }
        return std::nullopt;
    }

    /// All files with this name; absent when the query fails.
    std::optional<std::vector<FilePlace>> placesOf(std::string_view name) {
        sqlite3_stmt* statement = connection->files.get();
        ::sqlite3_bind_text(statement, 1, name.data(), static_cast<int>(name.size()),
                            SQLITE_STATIC);
        std::vector<FilePlace> places;
        int result = SQLITE_ROW;
        while ((result = ::sqlite3_step(statement)) == SQLITE_ROW)
            places.push_back({::sqlite3_column_int64(statement, 0),
                              static_cast<std::size_t>(::sqlite3_column_int64(statement, 1))});
        restart(statement);
        return result == SQLITE_DONE ? std::optional(std::move(places)) : std::nullopt;
    }

    Ownership ownerAt(const FilePlace& place, const std::string& file) {
        sqlite3_stmt* statement = connection->package.get();
        ::sqlite3_bind_int64(statement, 1, place.package);
        Ownership owner = std::unexpected(PackageFailure::unreadable);
        if (::sqlite3_step(statement) == SQLITE_ROW)
            owner = ownerIn(statement, place.number, file);
        restart(statement);
        return owner;
    }

    Ownership ownerIn(sqlite3_stmt* row, std::size_t number, const std::string& file) const {
        const auto header = RpmHeader::parse(bytesAt(row, 0));
        const auto listed = header ? header->file(number) : std::nullopt;
        if (!listed)
            return std::unexpected(PackageFailure::unreadable);
        if (merged.canonical(*listed) != file)
            return std::nullopt;
        auto owner = header->owner();
        if (!owner)
            return std::unexpected(PackageFailure::unreadable);
        return owner;
    }

    const MachineFiles machine;
    const std::string path;
    const MergedFolders merged;
    const DatabaseState start;
    /// Kept after `rest`, so that a lookup that was answered before does not open the database
    /// again.
    std::unordered_map<std::string, Ownership> answers;
    std::optional<Connection> connection;
};

/// The folder of the database; the first that holds one.
std::optional<std::string> folderOf(const MachineFiles& machine) {
    for (std::string folder : folders) {
        std::vector<std::string> files{folder + sqliteFile};
        for (const char* older : olderFiles)
            files.push_back(folder + older);
        if (!stateOf(machine, files).empty())
            return folder;
    }
    return std::nullopt;
}

DatabaseState state(const MachineFiles& machine) {
    const auto folder = folderOf(machine);
    if (!folder)
        return {};
    const std::string sqlite = *folder + sqliteFile;
    return stateOf(machine,
                   {sqlite, sqlite + "-wal", *folder + olderFiles[0], *folder + olderFiles[1]});
}

std::unique_ptr<PackageDatabase> open(const MachineFiles& machine, const OwnedFolders&,
                                      const std::stop_token&) {
    const auto folder = folderOf(machine);
    if (!folder || stateOf(machine, {*folder + sqliteFile}).empty())
        return std::make_unique<UnreadablePackages>(PackageFailure::unsupported);
    return std::make_unique<Reader>(machine, *folder);
}

} // namespace

std::optional<std::string> file(const MachineFiles& machine) {
    const auto folder = folderOf(machine);
    if (!folder || stateOf(machine, {*folder + sqliteFile}).empty())
        return std::nullopt;
    return *folder + sqliteFile;
}

PackageDatabaseForm form() {
    return {state, open};
}

} // namespace tidemark::RpmDatabase
