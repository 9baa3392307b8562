// Prints a manual page or a completion: tidemark-manual PROGRAM FORM DATE

#include "cli/TerminalCommands.h"
#include "manual/Completions.h"
#include "manual/ManualPage.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace {

using namespace tidemark;

std::string made(const manual::Program& program, std::string_view form, std::string_view date) {
    if (form == "page")
        return manual::page(program, TIDEMARK_VERSION, date);
    if (form == "bash")
        return manual::bashCompletion(program);
    if (form == "zsh")
        return manual::zshCompletion(program);
    return form == "fish" ? manual::fishCompletion(program) : "";
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view name = argc == 4 ? argv[1] : "";
    const auto program =
        name == "tidemark" ? manual::commandLine(commands::all()) : manual::desktop();
    const std::string text = name == program.name ? made(program, argv[2], argv[3]) : "";
    if (text.empty()) {
        std::fputs("usage: tidemark-manual tidemark|tidemark-desktop page|bash|zsh|fish DATE\n",
                   stderr);
        return 2;
    }
    const bool isWritten = std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    return isWritten ? 0 : 1;
}
