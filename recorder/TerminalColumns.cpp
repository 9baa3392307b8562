#include "recorder/TerminalColumns.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace tidemark {

std::int64_t terminalColumns() {
    winsize size{};
    if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return 80;
    return size.ws_col;
}

} // namespace tidemark
