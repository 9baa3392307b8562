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

/// A condition that holds when the words of the command were given and none of those that may
/// follow it.
std::string conditionOf(const Continuation& place) {
    std::string words(place.command);
    std::string text;
    if (words.empty())
        return place.words.empty() ? "" : " -n __fish_use_subcommand";
    text =
        "__fish_seen_subcommand_from " + replaced(words, " ", "; and __fish_seen_subcommand_from ");
    if (!place.words.empty())
        text += "; and not __fish_seen_subcommand_from";
    for (const auto& word : place.words)
        text += " " + std::string(word.name);
    return " -n " + inFishQuotes(text);
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
    std::string text =
        "# Completes " + std::string(program.name) + " in fish.\n" + complete + " -f\n";
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
