#include "cli/Console.h"

#include "core/base/Error.h"
#include "core/base/Text.h"
#include "core/presentation/SystemWords.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

namespace tidemark::console {

namespace {

[[noreturn]] void fail() {
    // EPIPE occurs only where SIGPIPE is ignored: by the parent, or by Qt once it has opened a
    // socket.
    if (errno == EPIPE)
        throw ReaderGone();
    throw Error("Standard output could not be written: " + std::string(std::strerror(errno)) + ".");
}

} // namespace

void print(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
        fail();
}

void finishOutput() {
    if (std::fflush(stdout) != 0)
        fail();
}

void complain(std::string_view sentence) {
    std::fprintf(stderr, "tidemark: %s\n", oneLine(systemWords::shown(sentence)).c_str());
}

bool takesEscapes(int descriptor) {
    const char* terminal = std::getenv("TERM");
    return ::isatty(descriptor) != 0 && terminal != nullptr && *terminal != '\0'
           && std::string_view(terminal) != "dumb";
}

bool useColour() {
    const char* noColour = std::getenv("NO_COLOR");
    return takesEscapes(STDOUT_FILENO) && (noColour == nullptr || *noColour == '\0');
}

} // namespace tidemark::console
