#include "manual/Completions.h"

namespace tidemark::manual {

namespace {

/// In an argument of _arguments, these characters end the text before them.
std::string part(std::string_view text) {
    return replaced(replaced(replaced(text, "\\", "\\\\"), ":", "\\:"), "]", "\\]");
}

std::string choiceWords(const OptionDescription& option) {
    std::string text;
    for (const auto& choice : option.choices)
        text += (text.empty() ? "" : " ") + replaced(part(choice), " ", "\\ ");
    return "(" + text + ")";
}

/// ":MESSAGE:ACTION", which offers the possible values.
std::string valueCompletion(const OptionDescription& option) {
    if (option.isFlag)
        return "";
    const auto action = !option.choices.empty() ? choiceWords(option)
                        : isPath(option)        ? std::string("_files")
                                                : std::string(" ");
    return ":" + part(option.form.valueName) + ":" + action;
}

/// The words for _arguments, a line each.
std::string descriptionOf(const OptionDescription& option) {
    const auto line = [](const std::string& text) { return " \\\n        " + inQuotes(text); };
    if (option.form.isPositional)
        return line((option.isRepeated ? "*" : "") + valueCompletion(option));
    std::string text;
    for (const auto& name : names(option))
        text += line((option.isRepeated ? "*" : "") + name + "[" + part(option.help) + "]"
                     + valueCompletion(option));
    return text;
}

std::string argumentsOf(const Continuation& place) {
    std::string text = "_arguments -S";
    for (const auto& option : place.options)
        text += descriptionOf(option);
    return text + "\n";
}

/// The commands that may be the next word.
std::string describe(const Continuation& place) {
    std::string text = "    commands=(\n";
    for (const auto& word : place.words)
        text += "        "
                + inQuotes(replaced(word.name, ":", "\\:") + ":" + std::string(word.summary))
                + "\n";
    return text + "    )\n";
}

} // namespace

std::string zshCompletion(const Program& program) {
    const std::string name(program.name);
    std::string text = "#compdef " + name + "\n\n# Completes " + name + " in zsh.\n"
                       + "local -a commands\nlocal command='' depth=1\n";
    std::string known;
    std::string cases;
    for (const auto& place : continuations(program)) {
        const std::string command = inQuotes(place.command);
        if (!place.command.empty())
            known += (known.empty() ? "" : "|") + command;
        cases += command + ")\n" + (place.words.empty() ? "" : describe(place)) + "    "
                 + argumentsOf(place) + "    ;;\n";
    }
    if (!known.empty())
        text += "while (( depth + 1 < CURRENT )); do\n"
                "    case \"${command:+$command }${words[depth + 1]}\" in\n    ("
                + known
                + ") command=\"${command:+$command }${words[depth + 1]}\"; (( depth++ )) ;;\n"
                  "    (*) break ;;\n    esac\ndone\n"
                  "words=(\"$command\" \"${(@)words[depth + 1,-1]}\")\n"
                  "(( CURRENT -= depth - 1 ))\n";
    return text + "case $command in\n" + cases
           + "esac\nlocal -i result=$?\n"
             "(( $#commands && CURRENT == 2 )) && _describe command commands && result=0\n"
             "return result\n";
}

} // namespace tidemark::manual
