#pragma once

#include <string>
#include <string_view>

/// What the commands share in talking to a person or to another program.
namespace tidemark::console {

/// Nobody reads standard output any more. To be caught in main(), which then ends the program
/// without a word.
struct ReaderGone {};

/// Writes to standard output. Throws `ReaderGone`, or `Error` when it can't be written, as on a
/// full disk.
void print(std::string_view text);
/// Makes sure that all of it has arrived. Throws the same.
void finishOutput();

/// Writes a sentence to standard error, as a line behind the program's name.
void complain(std::string_view sentence);

/// True for a terminal that understands escape sequences (ECMA-48), as all do but those that `TERM`
/// calls "dumb" or doesn't name.
bool takesEscapes(int descriptor);

/// True when standard output takes escapes and `NO_COLOR` is not set.
bool useColour();

} // namespace tidemark::console
