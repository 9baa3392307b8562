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

/// The units that are items, in two parts. The first has all units in folders of an administrator
/// or a user, and those units of the distribution that have a group [Install], that an
/// administrator or a user enabled, or whose file can't be read; the others are internal to the
/// system. The second has the instances of templates that an administrator or a user enabled. Both
/// parts are sorted by name, and files with one name by preference.
std::vector<Item> itemsOf(const UnitFolders& folders);

/// The unit in the terms of launchd.plist(5), with the keys of `BackgroundDefinition`. Several
/// folders can have a file with one name. Drop-ins apply only to the file in the most preferred
/// folder; a mask applies to the files in less preferred folders; the links that enable the unit
/// apply to all of them. A timer, a socket or a path has the program of the unit that it starts.
/// `unreadable` when the file or a drop-in of this unit or of the one that it starts can't be read.
std::expected<PropertyList::Dictionary, BackgroundDefinition::Failure>
definition(const UnitFolders& folders, const Item& item, const MergedFolders& merged);

} // namespace tidemark::UnitDefinition
