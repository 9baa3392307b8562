#pragma once

#include "recorder/Command.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tidemark {

/// What a command line asks for: a command, or a text to print, such as the help.
struct CommandLine {
    /// Null when there is only `text`.
    const Command* command = nullptr;
    /// With the options as given, and checked.
    std::unique_ptr<Invocation> invocation{};
    std::string text{};

    /// The meaning of the words behind the program's name. Throws `UsageError` for words that fit
    /// none of the commands.
    static CommandLine parse(std::span<const Command> commands, std::vector<std::string> words);
};

} // namespace tidemark
