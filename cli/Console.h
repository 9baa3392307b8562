#pragma once

#include <string>
#include <string_view>

/// What the commands share in talking to a person or to another program.
namespace tidemark::console {

/// Writes to standard output. Throws `Error` when it can't be written, as on a full disk.
void print(std::string_view text);
/// Makes sure that all of it has arrived.
void finishOutput();

/// Writes a sentence to standard error, as a line behind the program's name.
void complain(std::string_view sentence);

/// True when standard output is a terminal and `NO_COLOR` is not set.
bool useColour();

} // namespace tidemark::console
