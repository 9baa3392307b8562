#include "app/model/AppDataLocation.h"

namespace tidemark {

namespace {

constexpr std::string_view firstRunPrefix = "app.tidemark.firstrun.";
constexpr std::string_view beta = "app.tidemark.beta";

} // namespace

std::filesystem::path AppDataLocation::directoryName(std::string_view identifier) {
    if (identifier.starts_with(firstRunPrefix))
        return std::filesystem::path("Tidemark First Run") / identifier;
    return identifier == beta ? "Tidemark Beta" : "Tidemark";
}

DataFiles DataFiles::of(std::string_view identifier,
                        const std::filesystem::path& applicationSupport, bool sandboxed) {
    DataFiles files{applicationSupport / AppDataLocation::directoryName(identifier), {}};
    const bool startsAfresh =
        sandboxed || identifier.starts_with(firstRunPrefix) || identifier == beta;
    if (!startsAfresh)
        files.legacyJournal = files.directory.parent_path() / "Kelda/journal.json";
    return files;
}

} // namespace tidemark
