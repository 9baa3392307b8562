#pragma once

#include "recorder/Command.h"

#include <memory>

namespace tidemark::commandClient {

/// Carries out a command, in the running recorder or else in this process, and prints the answer.
/// Returns the exit status. Throws `Error`.
int carryOut(const Command& command, std::unique_ptr<Invocation> invocation);

} // namespace tidemark::commandClient
