#include "tests/support/Terminal.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

namespace tidemark::test {

int openTerminal() {
    const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (terminal >= 0 && ::grantpt(terminal) == 0 && ::unlockpt(terminal) == 0)
        return terminal;
    ::close(terminal);
    return -1;
}

bool hasTerminals() {
    const int terminal = openTerminal();
    ::close(terminal);
    return terminal >= 0;
}

} // namespace tidemark::test
