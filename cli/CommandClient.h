#pragma once

#include "recorder/Command.h"

#include <memory>

namespace tidemark::commandClient {

/// Executes a command in the running recorder, or in this process if none is running, and prints
/// the answer. Returns the exit status. Throws `Error`.
int carryOut(const Command& command, std::unique_ptr<Invocation> invocation);

} // namespace tidemark::commandClient
