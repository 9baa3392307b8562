#include "tests/cli/Program.h"

#include "tests/support/Terminal.h"

#include <array>
#include <ostream>
#include <stdexcept>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tidemark::test {

namespace {

/// Opened with the rights of the test program: some tests become another user, who may not be able
/// to reach the build folder.
const int program = ::open(TIDEMARK_PROGRAM, O_PATH | O_CLOEXEC);

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> list;
    for (std::string& text : texts)
        list.push_back(text.data());
    list.push_back(nullptr);
    return list;
}

/// Everything that was written to a terminal. Reading it ends with an error instead of an end of
/// file.
std::string drained(int terminal) {
    std::string text;
    std::array<char, 4096> block{};
    for (ssize_t count = 0; (count = ::read(terminal, block.data(), block.size())) > 0;)
        text.append(block.data(), static_cast<std::size_t>(count));
    return text;
}

} // namespace

void PrintTo(const Outcome& outcome, std::ostream* stream) {
    *stream << "status " << outcome.status << ", out:\n"
            << outcome.out << "\nerr:\n"
            << outcome.err;
}

Outcome run(const std::vector<std::string>& arguments, Output output,
            const std::vector<std::string>& environment, const std::function<void()>& beforehand) {
    const TemporaryFolder folder;
    std::vector<std::string> words{TIDEMARK_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    // If a variable occurs twice, the first value counts.
    std::vector<std::string> variables = environment;
    variables.insert(variables.end(), {"TZ=UTC", "LC_ALL=en_US.UTF-8"});
    const auto argv = pointers(words);
    const auto envp = pointers(variables);

    const int terminal = output == Output::terminal ? openTerminal() : -1;
    if (output == Output::terminal && terminal < 0)
        throw std::runtime_error("no terminal");
    const std::string outName = output == Output::terminal   ? ::ptsname(terminal)
                                : output == Output::fullDisk ? "/dev/full"
                                                             : (folder / "out").native();
    const std::string errName = (folder / "err").native();
    // The standard output of the child, unless that is the pipe. It is closed before a terminal is
    // drained, since reading from the terminal would not end otherwise.
    const int kept = ::open(outName.c_str(), O_WRONLY | O_CREAT | O_NOCTTY | O_CLOEXEC, 0600);
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    ::close(ends[0]);
    const int out = output == Output::closedPipe ? ends[1] : kept;
    const pid_t child = ::fork();
    if (child == 0) {
        // A test that runs as root may have changed its effective user. The program then gets that
        // user as its real user too, so that it can't become root again.
        if (::setreuid(::geteuid(), ::geteuid()) != 0)
            ::_exit(126);
        const int err = ::open(errName.c_str(), O_WRONLY | O_CREAT, 0600);
        if (::dup2(out, STDOUT_FILENO) < 0 || ::dup2(err, STDERR_FILENO) < 0)
            ::_exit(126);
        ::close(err);
        beforehand();
        ::fexecve(program, argv.data(), envp.data());
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ::close(kept);
    ::close(ends[1]);
    Outcome outcome;
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    outcome.out = output == Output::terminal ? drained(terminal) : contents(folder / "out");
    outcome.err = contents(errName);
    ::close(terminal);
    return outcome;
}

} // namespace tidemark::test
