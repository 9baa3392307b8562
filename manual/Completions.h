#pragma once

#include "manual/Program.h"

/// Scripts with which shells complete the commands, options and values of a program.
namespace tidemark::manual {

/// Needs no other script; bash-completion(7) loads it from a file with the program's name.
std::string bashCompletion(const Program& program);
/// For a folder of `fpath`, zshcompsys(1), in a file with the program's name after an underscore.
std::string zshCompletion(const Program& program);
std::string fishCompletion(const Program& program);

} // namespace tidemark::manual
