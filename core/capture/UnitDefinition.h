#pragma once

#include "core/base/MergedFolders.h"
#include "core/capture/BackgroundDefinition.h"
#include "core/capture/UnitFolders.h"

#include <expected>
#include <filesystem>
#include <string>
#include <vector>

/// Makes background items from units. Pure functions of the contents of a manager's folders.
namespace tidemark::UnitDefinition {

/// A unit that is listed as a background item.
struct Item {
    std::string name;
    /// The path of its file, or of the link that enables an instance of a template.
    std::filesystem::path path;
    /// The file that defines it.
    const UnitFolders::Fragment* fragment = nullptr;
};

/// The units that are items, by name, each name's files from the most preferred on: every unit in
/// a folder of an administrator or a user; of the distribution's only those that can be enabled or
/// were, since the others are internal to the system; and enabled instances of templates.
std::vector<Item> itemsOf(const UnitFolders& folders);

/// The unit in the terms of launchd.plist(5), with the keys of `BackgroundDefinition`. Drop-ins
/// belong to the most preferred file of a name; being enabled and being masked to all of them. A
/// timer, a socket or a path has the program of the unit that it starts. `unreadable` when the
/// file, or a drop-in, or those of the unit that it starts, can't be read.
std::expected<PropertyList::Dictionary, BackgroundDefinition::Failure>
definition(const UnitFolders& folders, const Item& item, const MergedFolders& merged);

} // namespace tidemark::UnitDefinition
