#pragma once

#include "recorder/Command.h"

#include <memory>

namespace tidemark::commandClient {

/// Has a command carried out and prints the answer: by the recorder that runs, else by this
/// process. Returns the exit status. Throws `Error`.
int carryOut(const Command& command, std::unique_ptr<Invocation> invocation);

} // namespace tidemark::commandClient
