#pragma once

#include "recorder/Command.h"

#include <span>

/// The commands that a recorder carries out, in the order of the help: a row for each, which
/// declares the function of this name. A source in recorder/commands/ defines it; without the row
/// that source does not compile, without the source the program does not link.
#define TIDEMARK_RECORDER_COMMANDS(ROW)                                                            \
    ROW(capture)                                                                                   \
    ROW(status)                                                                                    \
    ROW(pause)                                                                                     \
    ROW(resume)                                                                                    \
    ROW(schedule)                                                                                  \
    ROW(coverage)                                                                                  \
    ROW(timeline)                                                                                  \
    ROW(search)                                                                                    \
    ROW(show)                                                                                      \
    ROW(activity)                                                                                  \
    ROW(memory)                                                                                    \
    ROW(snapshotSave)                                                                              \
    ROW(snapshotList)                                                                              \
    ROW(snapshotShow)                                                                              \
    ROW(snapshotCompare)                                                                           \
    ROW(snapshotDelete)                                                                            \
    ROW(importHistory)                                                                             \
    ROW(exportHistory)                                                                             \
    ROW(foldersList)                                                                               \
    ROW(foldersAdd)                                                                                \
    ROW(foldersTrack)                                                                              \
    ROW(foldersRemove)                                                                             \
    ROW(foldersCheck)                                                                              \
    ROW(settingsList)                                                                              \
    ROW(settingsGet)                                                                               \
    ROW(settingsSet)

namespace tidemark::commands {

#define TIDEMARK_DECLARE(name) Command name();
TIDEMARK_RECORDER_COMMANDS(TIDEMARK_DECLARE)
#undef TIDEMARK_DECLARE

/// All of them.
std::span<const Command> ofRecorder();

} // namespace tidemark::commands
