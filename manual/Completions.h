#pragma once

#include "manual/Program.h"

/// Scripts with which shells complete the commands, options and values of a program.
namespace tidemark::manual {

/// Needs no other script; bash-completion(7) loads it from a file with the program's name.
std::string bashCompletion(const Program& program);
/// To be put into a folder of `fpath` (see zshcompsys(1)), in a file whose name is an underscore
/// and the name of the program.
std::string zshCompletion(const Program& program);
std::string fishCompletion(const Program& program);

} // namespace tidemark::manual
