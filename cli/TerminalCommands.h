#pragma once

#include "recorder/Command.h"

#include <span>

/// The commands that always run in the process of the command line, never in the running recorder:
/// a row for each, as in recorder/Commands.h. Each is defined in a file in cli/commands/.
#define TIDEMARK_TERMINAL_COMMANDS(ROW)                                                            \
    ROW(run)                                                                                       \
    ROW(serviceStatus)                                                                             \
    ROW(serviceEnable)                                                                             \
    ROW(serviceDisable)                                                                            \
    ROW(erase)                                                                                     \
    ROW(doctor)                                                                                    \
    ROW(observe)                                                                                   \
    ROW(compare)

namespace tidemark::commands {

#define TIDEMARK_DECLARE(name) Command name();
TIDEMARK_TERMINAL_COMMANDS(TIDEMARK_DECLARE)
#undef TIDEMARK_DECLARE

/// Every command of the program, in the order of the help.
std::span<const Command> all();

} // namespace tidemark::commands
