#pragma once

#include "recorder/Command.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tidemark {

/// A parsed command line: a command, or a text to print, such as the help.
struct CommandLine {
    /// Null when only `text` is to be printed.
    const Command* command = nullptr;
    /// The command's options as given, after validation.
    std::unique_ptr<Invocation> invocation{};
    std::string text{};

    /// Parses the words after the program's name. Throws `UsageError` when they fit none of the
    /// commands or an option has a value that is not allowed.
    static CommandLine parse(std::span<const Command> commands, std::vector<std::string> words);
};

} // namespace tidemark
