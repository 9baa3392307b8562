#pragma once

#include "recorder/Command.h"

#include <span>

/// The commands that a recorder carries out, in the order of the help. Each row declares a function
/// of this name, which a file in recorder/commands/ defines: without the row the file does not
/// compile, without the file the program does not link.
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
    ROW(chart)                                                                                     \
    ROW(grew)                                                                                      \
    ROW(digest)                                                                                    \
    ROW(clipsCopy)                                                                                 \
    ROW(clipsPin)                                                                                  \
    ROW(clipsClear)                                                                                \
    ROW(snapshotSave)                                                                              \
    ROW(snapshotList)                                                                              \
    ROW(snapshotShow)                                                                              \
    ROW(snapshotCompare)                                                                           \
    ROW(snapshotDelete)                                                                            \
    ROW(diff)                                                                                      \
    ROW(importHistory)                                                                             \
    ROW(exportHistory)                                                                             \
    ROW(foldersList)                                                                               \
    ROW(foldersAdd)                                                                                \
    ROW(foldersTrack)                                                                              \
    ROW(foldersRemove)                                                                             \
    ROW(foldersCheck)                                                                              \
    ROW(settingsList)                                                                              \
    ROW(settingsGet)                                                                               \
    ROW(settingsSet)                                                                               \
    ROW(window)                                                                                    \
    ROW(handOver)

namespace tidemark::commands {

#define TIDEMARK_DECLARE(name) Command name();
TIDEMARK_RECORDER_COMMANDS(TIDEMARK_DECLARE)
#undef TIDEMARK_DECLARE

/// All commands in the list above.
std::span<const Command> ofRecorder();

} // namespace tidemark::commands
