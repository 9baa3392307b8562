#include "cli/TerminalCommands.h"

#include "recorder/Commands.h"

#include <algorithm>
#include <vector>

namespace tidemark {

namespace {

std::vector<Command> inOrder() {
#define TIDEMARK_CALL(name) commands::name(),
    std::vector<Command> all{TIDEMARK_TERMINAL_COMMANDS(TIDEMARK_CALL)};
#undef TIDEMARK_CALL
    std::ranges::copy(commands::ofRecorder(), std::back_inserter(all));
    std::ranges::stable_sort(all, {}, &Command::group);
    return all;
}

} // namespace

std::span<const Command> commands::all() {
    static const std::vector<Command> table = inOrder();
    return table;
}

} // namespace tidemark
