#include "core/packages/PackageIndex.h"

#include "core/base/Text.h"
#include "core/packages/DpkgDatabase.h"
#include "core/packages/ListedPackages.h"
#include "core/packages/PacmanDatabase.h"
#include "core/packages/RpmDatabase.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace tidemark {

namespace {

/// A machine can have several databases: the tools of rpm run on Debian, too.
using Form = PackageDatabaseForm (*)();
constexpr Form forms[] = {DpkgDatabase::form, PacmanDatabase::form, RpmDatabase::form};

/// Folders in which packages install nothing (file-hierarchy(7)). No database is asked for files
/// there, so a damaged one does not affect the applications that users installed themselves.
constexpr std::string_view foldersOfUsers[] = {"/home", "/root", "/usr/local", "/var/home"};

bool isBelowAny(std::string_view path, const auto& folders) {
    return std::ranges::any_of(folders,
                               [&](std::string_view folder) { return isBelow(path, folder); });
}

} // namespace

PackageIndex::Reading PackageIndex::read(const MachineFiles& newMachine,
                                         const OwnedFolders& newFolders,
                                         const std::stop_token& newStop) {
    return {*this, newMachine, newFolders, newStop};
}

void PackageIndex::refresh(const MachineFiles& newMachine, const OwnedFolders& newFolders,
                           const std::stop_token& newStop) {
    stop = newStop;
    if (databases.empty() || !(machine == newMachine) || folders != newFolders) {
        machine = newMachine;
        folders = newFolders;
        databases.clear();
        for (const Form form : forms)
            databases.push_back({form(), {}, nullptr});
    }
    for (auto& each : databases)
        if (auto now = each.form.state(machine); now != each.state)
            each = {each.form, std::move(now), nullptr};
}

Ownership PackageIndex::owner(const std::string& path) {
    if (!isBelowAny(path, folders) || isBelowAny(path, foldersOfUsers))
        return std::nullopt;
    Ownership answer = std::nullopt;
    for (auto& each : databases) {
        if (each.state.empty())
            continue;
        if (!each.database)
            open(each);
        const auto found = each.database->owner(path);
        if (!found)
            answer = found;
        else if (*found)
            return found;
    }
    return answer;
}

void PackageIndex::open(Kept& kept) const {
    kept.database = kept.form.open(machine, folders, stop);
    // After a stop request, reading may have ended early. No database has the state that is set
    // here, so the next `read` sees a change and discards what was read.
    if (stop.stop_requested())
        return kept.state.assign(1, std::unexpected(ECANCELED));
    // The database was written while it was read, so what was read may be inconsistent. The next
    // `read` sees another state and opens it again.
    if (kept.form.state(machine) != kept.state)
        kept.database = std::make_unique<UnreadablePackages>(PackageFailure::unreadable);
}

void PackageIndex::rest() {
    stop = {};
    for (auto& each : databases)
        if (each.database)
            each.database->rest();
}

} // namespace tidemark
