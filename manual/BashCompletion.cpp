#include "manual/Completions.h"

#include <algorithm>

namespace tidemark::manual {

namespace {

using Words = std::vector<std::string>;

/// In COMP_WORDS, "--option=value" is three words, since readline breaks words at "=".
constexpr std::string_view start = R"bash(
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}
    local command='' offered=() paths=false candidate i
    if [[ $word == '=' ]]; then
        word=''
    elif [[ $before == '=' ]]; then
        before=${COMP_WORDS[COMP_CWORD-2]}
    fi
)bash";

constexpr std::string_view end = R"bash(    COMPREPLY=()
    for candidate in "${offered[@]}"; do
        [[ $candidate == "$word"* ]] && COMPREPLY+=("$(printf '%q' "$candidate")")
    done
    $paths || return 0
    compopt -o filenames 2>/dev/null
    while IFS= read -r candidate; do
        COMPREPLY+=("$candidate")
    done < <(compgen -f -- "$word")
}
)bash";

std::string joined(const Words& words, std::string_view between) {
    std::string text;
    for (const auto& word : words)
        text += (text.empty() ? "" : std::string(between)) + inQuotes(word);
    return text;
}

/// One branch of a `case` statement of the shell: its patterns and the action for them.
std::string branch(const Words& patterns, const std::string& action) {
    return "    " + joined(patterns, " | ") + ") " + action + " ;;\n";
}

/// Shell code that sets `offered` to the words to choose from, and `paths` to true if a path may be
/// given.
std::string offer(const Words& words, bool takesPath) {
    return "offered=(" + joined(words, " ") + ")" + (takesPath ? " paths=true" : "");
}

/// Shell code that finds the command among the words that were typed: it appends a word to
/// `command` only if the result is the name of a command, and skips all others.
std::string recognition(const std::vector<Continuation>& places) {
    Words commands;
    for (const auto& place : places)
        if (!place.command.empty())
            commands.emplace_back(place.command);
    if (commands.empty())
        return "";
    return "    for ((i = 1; i < COMP_CWORD; i++)); do\n"
           "        candidate=${command:+$command }${COMP_WORDS[i]}\n"
           "        case $candidate in\n        "
           + joined(commands, " | ") + ") command=$candidate ;;\n        esac\n    done\n";
}

/// The values of the options that take one.
std::string values(const std::vector<Continuation>& places) {
    std::string text;
    for (const auto& place : places)
        for (const auto& option : place.options) {
            Words patterns;
            for (const auto& name : names(option))
                patterns.push_back(std::string(place.command) + ":" + name);
            if (!patterns.empty() && !option.isFlag)
                text += branch(patterns, offer(option.choices, isPath(option)));
        }
    return text;
}

std::string following(const Continuation& place) {
    Words words;
    bool takesPath = false;
    for (const auto& word : place.words)
        words.emplace_back(word.name);
    for (const auto& option : place.options) {
        if (option.form.isPositional)
            std::ranges::copy(option.choices, std::back_inserter(words));
        else
            words.push_back(names(option).back());
        takesPath = takesPath || (option.form.isPositional && isPath(option));
    }
    return branch({std::string(place.command)}, offer(words, takesPath));
}

} // namespace

std::string bashCompletion(const Program& program) {
    const auto places = continuations(program);
    const std::string function = "_" + replaced(program.name, "-", "_");
    std::string text = "# Completes " + std::string(program.name) + " in bash.\n\n" + function
                       + "() {" + std::string(start) + recognition(places)
                       + "    case $command:$before in\n" + values(places)
                       + "    *)\n    case $command in\n";
    for (const auto& place : places)
        text += following(place);
    return text + "    esac ;;\n    esac\n" + std::string(end) + "\ncomplete -F " + function + " "
           + std::string(program.name) + "\n";
}

} // namespace tidemark::manual
