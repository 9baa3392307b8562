#pragma once

#include "recorder/Command.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What the manual pages and the completions of shells say, made from the tables of commands and
/// options.
namespace tidemark::manual {

/// All commands with the same first word: one of that name, or several with a second word.
struct Family {
    std::string_view name;
    CommandGroup group{};
    std::string_view summary;
    /// The command of one word, else that of `commands` which has the summary of the family: the
    /// first word alone carries it out if it `answersFamily`.
    const Command* alone = nullptr;
    /// The commands with a second word.
    std::vector<const Command*> commands{};
};

/// A list of things, each with what it is.
struct Section {
    struct Item {
        std::string_view name;
        std::string_view meaning;
    };

    std::string_view title;
    std::vector<Item> items;
};

/// One of the two programs.
struct Program {
    std::string_view name;
    std::string_view summary;
    std::vector<std::string_view> description;
    /// Taken by the program itself and, if it has commands, by each of them.
    std::vector<OptionDescription> options;
    std::vector<Family> families{};
    std::vector<Section> sections{};
};

/// `commands` must outlive the result.
Program commandLine(std::span<const Command> commands);
Program desktop();

/// What may follow a command on the command line.
struct Continuation {
    struct Word {
        std::string_view name;
        std::string_view summary;
    };

    /// The words of the command so far: "", "snapshot" or "snapshot save".
    std::string_view command;
    /// Its own options and those of the program.
    std::vector<OptionDescription> options;
    std::vector<Word> words{};
};

/// One for the program alone, one for each first word, and one for each command of two words.
std::vector<Continuation> continuations(const Program& program);

/// The names of an option as they are written: "-o" and "--output". None if it has no name.
std::vector<std::string> names(const OptionDescription& option);

/// Whether the value is the path of a file or folder.
bool isPath(const OptionDescription& option);

/// The text with every `from` replaced by `to`.
std::string replaced(std::string_view text, std::string_view from, std::string_view to);
/// The text in single quotes, as bash and zsh read it.
std::string inQuotes(std::string_view text);

} // namespace tidemark::manual
