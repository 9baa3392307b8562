#pragma once

#include "recorder/Command.h"

#include <memory>

namespace tidemark::commandClient {

/// Executes a command: in this process if the command always runs here or no recorder is running,
/// else in the running recorder. Asks the command's question first, if it has one. Prints the
/// answer, or writes it to the file that the options name. Returns the exit status, which is 0 if
/// the user declined. Throws `Error`.
int carryOut(const Command& command, std::unique_ptr<Invocation> invocation);

} // namespace tidemark::commandClient
