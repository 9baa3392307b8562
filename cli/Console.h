#pragma once

#include <string>
#include <string_view>

/// Output to the terminal or to another program.
namespace tidemark::console {

/// Thrown when the reader of standard output has closed it. main() catches it and ends the program
/// without a message.
struct ReaderGone {};

/// Writes to standard output. Throws `ReaderGone`, or `Error` when writing fails, as on a full
/// disk.
void print(std::string_view text);
/// Flushes standard output. Throws as `print` does.
void finishOutput();

/// Writes "tidemark: " and a sentence to standard error.
void complain(std::string_view sentence);

/// True for a terminal that supports escape sequences (ECMA-48): any, unless `TERM` is "dumb",
/// empty or not set.
bool takesEscapes(int descriptor);

/// True when standard output supports escape sequences and `NO_COLOR` is empty or not set.
bool useColour();

} // namespace tidemark::console
