#include "manual/ManualPage.h"

#include <algorithm>

namespace tidemark::manual {

namespace {

/// A line of text. A backslash begins an escape, a plain hyphen may be set as a longer one, and a
/// full stop or an apostrophe at the start of a line begins a request.
std::string line(std::string_view text) {
    std::string result = replaced(replaced(text, "\\", "\\e"), "-", "\\-");
    if (result.starts_with('.') || result.starts_with('\''))
        result.insert(0, "\\&");
    return result + "\n";
}

/// The text as one word in this font of man(7).
std::string inFont(char font, std::string_view text) {
    std::string words = line(text);
    words.pop_back();
    return std::string("\\f") + font + words + "\\fR";
}

std::string uppercased(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    return result;
}

std::string valueOf(const OptionDescription& option) {
    return inFont('I', option.form.isPositional ? uppercased(option.name)
                                                : std::string(option.form.valueName));
}

/// "-o, --output FILE"
std::string heading(const OptionDescription& option) {
    std::string text;
    for (const auto& name : names(option))
        text += (text.empty() ? "" : ", ") + inFont('B', name);
    if (option.isFlag)
        return text;
    return text + (text.empty() ? "" : " ") + valueOf(option);
}

std::string choicesOf(const OptionDescription& option) {
    std::string text;
    for (const auto& choice : option.choices)
        text += (text.empty() ? ": " : ", ") + choice;
    return text;
}

std::string listOf(const std::vector<OptionDescription>& options) {
    std::string text;
    for (const auto& option : options)
        text += ".TP\n" + heading(option) + "\n"
                + line(std::string(option.help) + choicesOf(option) + ".");
    return text;
}

/// How a command is written: its required values, and the others in brackets.
std::string usageOf(const Command& command) {
    std::string text = inFont('B', "tidemark " + std::string(command.name));
    const auto isOption = [](const OptionDescription& option) { return !option.form.isPositional; };
    if (std::ranges::any_of(command.options, isOption))
        text += " [" + inFont('I', "OPTION") + "...]";
    for (const auto& option : command.options) {
        if (isOption(option))
            continue;
        const std::string value = valueOf(option) + (option.isRepeated ? "..." : "");
        text += " " + (option.form.isRequired ? value : "[" + value + "]");
    }
    return text + "\n";
}

std::string sectionOf(const Command& command) {
    std::string text = ".SS " + std::string(command.name) + "\n" + usageOf(command) + ".PP\n"
                       + line(std::string(command.summary) + ".");
    if (!command.details.empty())
        text += ".PP\n" + line(replaced(command.details, "\n", " "));
    if (command.answersFamily()) {
        const auto family = command.name.substr(0, command.name.find(' '));
        text +=
            ".PP\n" + inFont('B', "tidemark " + std::string(family)) + " alone does the same.\n";
    }
    return text + listOf(command.options);
}

std::string sectionsOf(const Family& family) {
    if (family.commands.empty())
        return sectionOf(*family.alone);
    std::string text;
    for (const auto* command : family.commands)
        text += sectionOf(*command);
    return text;
}

std::string commandsOf(const Program& program) {
    std::string text;
    const CommandGroup* group = nullptr;
    for (const auto& family : program.families) {
        if (!group || *group != family.group)
            text += ".SH " + uppercased(title(family.group)) + "\n";
        group = &family.group;
        text += sectionsOf(family);
    }
    return text;
}

std::string sectionOf(const Section& section) {
    std::string text = ".SH " + std::string(section.title) + "\n";
    for (const auto& item : section.items)
        text += ".TP\n" + inFont('B', item.name) + "\n" + line(item.meaning);
    return text;
}

} // namespace

std::string page(const Program& program, std::string_view version, std::string_view date) {
    const std::string name = line(program.name);
    std::string text = ".TH " + uppercased(program.name) + " 1 " + std::string(date)
                       + " \"Tidemark " + std::string(version) + "\" \"User Commands\"\n"
                       + ".SH NAME\n" + name.substr(0, name.size() - 1) + " \\- "
                       + line(program.summary) + ".SH SYNOPSIS\n" + inFont('B', program.name)
                       + (program.families.empty() ? "" : " " + inFont('I', "COMMAND")) + " ["
                       + inFont('I', "OPTION") + "...]\n.SH DESCRIPTION\n";
    for (const auto& paragraph : program.description)
        text += ".PP\n" + line(paragraph);
    text += ".SH OPTIONS\n" + listOf(program.options) + commandsOf(program);
    for (const auto& section : program.sections)
        text += sectionOf(section);
    return text;
}

} // namespace tidemark::manual
