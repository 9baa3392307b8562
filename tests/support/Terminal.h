#pragma once

namespace tidemark::test {

/// The master side of a new pseudo-terminal; -1 when none can be opened.
int openTerminal();

/// Whether this machine has terminals; a container without /dev/pts has none.
bool hasTerminals();

} // namespace tidemark::test
