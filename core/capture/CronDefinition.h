#pragma once

#include "core/base/MachineFiles.h"
#include "core/base/MergedFolders.h"
#include "core/capture/BackgroundDefinition.h"
#include "core/capture/FolderListing.h"

/// The jobs that cron(8) runs for the system: tables of commands and times in folders such as
/// /etc/cron.d, and scripts in folders whose names give the interval, such as /etc/cron.daily.
namespace tidemark::CronDefinition {

/// Whether the name has only letters, digits, "_" and "-", as cron and run-parts(8) require. So
/// files that a package manager keeps beside another, such as "x.dpkg-old", are left out.
bool recognises(const FolderEntry& entry);

/// All jobs of a table as one item. A line that is no comment, no assignment and no job makes the
/// whole table unreadable.
BackgroundDefinition::Result readTable(const FolderEntry& table, const MergedFolders& merged);

/// A script. Only its name and whether it may be executed are read.
BackgroundDefinition::Result readScript(const FolderEntry& script, const MergedFolders& merged);

/// Whether the machine has, or may have, the folder of its users' tables, which only a program of
/// cron itself may read.
bool hasPersonalTables(const MachineFiles& machine);

} // namespace tidemark::CronDefinition
