#include "cli/CommandClient.h"
#include "cli/CommandLine.h"
#include "cli/Console.h"
#include "cli/TerminalCommands.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <new>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int failed = 1;
constexpr int wrongUsage = 2;
/// What a shell reports of a program that SIGPIPE ended.
constexpr int readerGone = 128 + SIGPIPE;

/// A file that the program opens must not get the number of a stream that its parent had closed:
/// what is printed would go into it.
void openStandardStreams() {
    int opened = -1;
    do
        opened = ::open("/dev/null", O_RDWR);
    while (opened >= 0 && opened <= STDERR_FILENO);
    if (opened >= 0)
        ::close(opened);
}

int carryOut(std::vector<std::string> words) {
    auto line = tidemark::CommandLine::parse(tidemark::commands::all(), std::move(words));
    if (line.command)
        return tidemark::commandClient::carryOut(*line.command, std::move(line.invocation));
    tidemark::console::print(line.text);
    return 0;
}

int run(std::vector<std::string> words) {
    try {
        const int status = carryOut(std::move(words));
        tidemark::console::finishOutput();
        return status;
    } catch (const tidemark::console::ReaderGone&) {
        return readerGone;
    } catch (const tidemark::UsageError& error) {
        tidemark::console::complain(error.what());
        std::fputs("Run with --help for more information.\n", stderr);
        return wrongUsage;
    } catch (const std::bad_alloc&) {
        tidemark::console::complain("There is not enough memory.");
    } catch (const std::exception& error) {
        tidemark::console::complain(error.what());
    }
    return failed;
}

} // namespace

int main(int argc, char** argv) {
    openStandardStreams();
    // A parent may have left it ignored, and then the end of a child process could not be known.
    std::signal(SIGCHLD, SIG_DFL);
    // A write beyond the largest file that is allowed (ulimit -f) fails like any other, instead of
    // ending the program with a temporary file left. A handler, unlike an ignored signal, is not
    // inherited by the programs that this one starts.
    std::signal(SIGXFSZ, [](int) {});
    return run({argv + std::min(argc, 1), argv + argc});
}
