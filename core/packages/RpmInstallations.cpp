#include "core/packages/RpmInstallations.h"

#include "core/packages/RpmDatabase.h"
#include "core/packages/RpmHeader.h"
#include "core/packages/SqliteFile.h"

#include <cstring>
#include <set>

namespace tidemark::RpmInstallations {

namespace {

/// The most steps of SQLite's virtual machine in one query; enough for tens of thousands of
/// transactions.
constexpr int mostSteps = 100'000'000;
/// The name under which signing keys are recorded like packages.
constexpr std::string_view keyPackage = "gpg-pubkey";

struct History {
    const char* path;
    const char* query;
};
/// Each query returns the name and the reason of each change of a package, oldest first. A package
/// is automatic if its last reason is 1, "dependency", or 4, "weak dependency".
constexpr History histories[] = {
    {"/var/lib/dnf/history.sqlite",
     "SELECT rpm.name, trans_item.reason FROM trans_item JOIN rpm USING (item_id) "
     "ORDER BY trans_item.id"},
    {"/usr/lib/sysimage/libdnf5/transaction_history.sqlite",
     "SELECT pkg_names.name, trans_item.reason_id FROM trans_item JOIN rpm USING (item_id) "
     "JOIN pkg_names ON pkg_names.id = rpm.name_id ORDER BY trans_item.id"},
};

/// The packages that were installed because others need them; none when no history can be read.
std::set<std::string, std::less<>> automaticNames(const MachineFiles& machine) {
    std::set<std::string, std::less<>> names;
    for (const auto& [path, query] : histories) {
        const SqliteFile file(machine.outside(machine.canonical(path)).native(), mostSteps);
        const auto statement = file.prepare(query);
        while (statement && ::sqlite3_step(statement.get()) == SQLITE_ROW) {
            std::string name(bytesAt(statement.get(), 0));
            const int reason = ::sqlite3_column_int(statement.get(), 1);
            if (reason == 1 || reason == 4)
                names.insert(std::move(name));
            else
                names.erase(name);
        }
    }
    return names;
}

/// The number of a transaction is the second in which it began, in the byte order of the machine.
std::optional<Date> dateOf(std::string_view key) {
    std::uint32_t seconds = 0;
    if (key.size() != sizeof(seconds))
        return std::nullopt;
    std::memcpy(&seconds, key.data(), sizeof(seconds));
    return Date::fromUnix(seconds);
}

struct InstalledPackage {
    /// The key of its header in the table `Packages`.
    sqlite3_int64 number;
    Date date;
};

/// The packages of the transactions since `since`; absent when the query fails.
std::optional<std::vector<InstalledPackage>> packagesSince(const SqliteFile& file, Date since) {
    const auto statement = file.prepare("SELECT key, hnum FROM Installtid");
    std::vector<InstalledPackage> packages;
    int result = SQLITE_ERROR;
    while (statement && (result = ::sqlite3_step(statement.get())) == SQLITE_ROW)
        if (const auto date = dateOf(bytesAt(statement.get(), 0)); date && *date >= since)
            packages.push_back({::sqlite3_column_int64(statement.get(), 1), *date});
    return result == SQLITE_DONE ? std::optional(std::move(packages)) : std::nullopt;
}

std::expected<std::vector<Installation>, PackageFailure> readFrom(const SqliteFile& file,
                                                                  Date since) {
    const auto packages = packagesSince(file, since);
    const auto statement = file.prepare("SELECT blob FROM Packages WHERE hnum = ?");
    if (!packages || !statement)
        return std::unexpected(PackageFailure::unreadable);
    std::vector<Installation> all;
    for (const auto& [number, date] : *packages) {
        restart(statement.get());
        ::sqlite3_bind_int64(statement.get(), 1, number);
        if (::sqlite3_step(statement.get()) != SQLITE_ROW)
            return std::unexpected(PackageFailure::unreadable);
        const auto header = RpmHeader::parse(bytesAt(statement.get(), 0));
        const auto owner = header ? header->owner() : std::nullopt;
        if (owner && owner->package != keyPackage)
            all.push_back({*owner, date, false});
    }
    return all;
}

} // namespace

std::expected<std::vector<Installation>, PackageFailure> read(const MachineFiles& machine,
                                                              Date since) {
    const auto before = RpmDatabase::form().state(machine);
    const auto path = RpmDatabase::file(machine);
    if (!path)
        return before.empty() ? std::expected<std::vector<Installation>, PackageFailure>()
                              : std::unexpected(PackageFailure::unsupported);
    auto found =
        readFrom(SqliteFile(machine.outside(machine.canonical(*path)).native(), mostSteps), since);
    if (RpmDatabase::form().state(machine) != before)
        return std::unexpected(PackageFailure::unreadable);
    if (!found || found->empty())
        return found;
    const auto automatic = automaticNames(machine);
    for (auto& each : *found)
        each.isAutomatic = automatic.contains(each.package.package);
    return found;
}

} // namespace tidemark::RpmInstallations
