#include "manual/Completions.h"

namespace tidemark::manual {

namespace {

/// The text in single quotes, as fish reads it.
std::string inFishQuotes(std::string_view text) {
    return "'" + replaced(replaced(text, "\\", "\\\\"), "'", "\\'") + "'";
}

/// A list of words for `complete --arguments`, which reads it as a command line.
std::string listOf(const std::vector<std::string>& words) {
    std::string text;
    for (const auto& word : words)
        text += (text.empty() ? "" : " ") + inFishQuotes(word);
    return inFishQuotes(text);
}

/// Functions that get the words of a command and compare them with those before the cursor: whether
/// the command line begins with them, and whether only options follow them.
constexpr std::string_view functions = R"fish(function __tidemark_in
    string match -qr -- "^\S+ $argv( |\$)" (string join ' ' -- (commandline -opc))
end
function __tidemark_after
    string match -qr -- "^\S+ $argv( -\S*)*\$" (string join ' ' -- (commandline -opc))
end
)fish";

/// A condition that holds within the command, and if words may follow it, before any of them.
std::string conditionOf(const Continuation& place) {
    const bool hasWords = !place.words.empty();
    if (place.command.empty())
        return hasWords ? " -n __fish_use_subcommand" : "";
    return " -n "
           + inFishQuotes((hasWords ? "__tidemark_after " : "__tidemark_in ")
                          + std::string(place.command));
}

std::string optionOf(const OptionDescription& option) {
    if (option.form.isPositional)
        return option.choices.empty() ? isPath(option) ? " -F" : ""
                                      : " -a " + listOf(option.choices);
    std::string text;
    if (option.form.letter)
        text += std::string(" -s ") + option.form.letter;
    text += " -l " + std::string(option.name) + " -d " + inFishQuotes(option.help);
    if (option.isFlag)
        return text;
    if (isPath(option))
        return text + " -r -F";
    return text + " -x" + (option.choices.empty() ? "" : " -a " + listOf(option.choices));
}

} // namespace

std::string fishCompletion(const Program& program) {
    const std::string complete = "complete -c " + std::string(program.name);
    std::string text = "# Completes " + std::string(program.name) + " in fish.\n";
    if (!program.families.empty())
        text += functions;
    text += complete + " -f\n";
    for (const auto& place : continuations(program)) {
        const std::string begin = complete + conditionOf(place);
        for (const auto& word : place.words)
            text += begin + " -a " + std::string(word.name) + " -d " + inFishQuotes(word.summary)
                    + "\n";
        for (const auto& option : place.options)
            if (const auto rest = optionOf(option); !rest.empty())
                text += begin + rest + "\n";
    }
    return text;
}

} // namespace tidemark::manual
