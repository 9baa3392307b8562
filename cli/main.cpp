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
/// The status that shells report for a program that SIGPIPE ended.
constexpr int readerGone = 128 + SIGPIPE;

/// Opens /dev/null for standard streams that the parent has closed: otherwise a file opened by the
/// program would get that number, and output would go into the file.
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
    // If the parent left SIGCHLD ignored, the status of child processes would be lost.
    std::signal(SIGCHLD, SIG_DFL);
    // Makes a write beyond the file size limit (ulimit -f) fail with an error instead of killing
    // the program and leaving a temporary file. A handler, unlike an ignored signal, is not kept by
    // the programs that this one starts.
    std::signal(SIGXFSZ, [](int) {});
    return run({argv + std::min(argc, 1), argv + argc});
}
