#include "core/capture/UnitItems.h"

#include "core/base/Text.h"
#include "core/capture/UnitDefinition.h"
#include "core/capture/UnitFolders.h"

namespace tidemark::UnitItems {

namespace {

namespace fs = std::filesystem;

/// The index of the folder that a path lies in.
std::size_t folderOf(const fs::path& path, const std::vector<fs::path>& folders) {
    std::size_t index = 0;
    while (index + 1 < folders.size() && !isBelow(path.native(), folders[index].native()))
        ++index;
    return index;
}

} // namespace

FamilyDefinitions read(const MachineFiles& machine, const std::vector<fs::path>& folders,
                       std::vector<RootReading>& readings, const MergedFolders& merged) {
    FamilyDefinitions result;
    UnitFoldersReader reader(machine, folders);
    for (std::size_t i = 0; i < folders.size(); ++i)
        if (auto unreadable = reader.read(i, readings[i]); unreadable && !result.unreadable)
            result.unreadable = std::move(unreadable);
    const UnitFolders units = reader.finish();
    const auto items = UnitDefinition::itemsOf(units);
    result.definitions.reserve(items.size());
    for (const auto& item : items) {
        const std::size_t folder = folderOf(item.path, folders);
        // The time for making the definitions is limited as well: with many drop-ins it is as much
        // work as reading.
        if (!readings[folder].mayContinue()) {
            result.unreadable = result.unreadable.value_or(folders[folder]);
            break;
        }
        result.definitions.push_back(
            {folder, item.path, UnitDefinition::definition(units, item, merged)});
    }
    for (const auto& link : units.linkedUnits)
        result.links.emplace_back(folderOf(link, folders), link);
    return result;
}

} // namespace tidemark::UnitItems
