#pragma once

#include "recorder/RecorderArguments.h"

#include <string>
#include <vector>

/// The program as a recorder, and as the one who talks to it.
namespace tidemark::recorderProgram {

/// Records in the foreground until SIGINT or SIGTERM. `setup` chooses the folders of a first
/// start: "recommended", "none", or empty to ask on a terminal. Returns the exit status; throws
/// `Error`.
int run(const std::string& setup);

/// Has a command carried out: by the recorder that runs, else by this process. `line` are the
/// arguments as given. Returns the exit status; throws `Error`.
int carryOut(const RecorderArguments& arguments, const std::vector<std::string>& line);

} // namespace tidemark::recorderProgram
