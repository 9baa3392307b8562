#include "manual/Program.h"

#include "desktop/DesktopOptions.h"

#include <algorithm>
#include <iterator>

namespace tidemark::manual {

namespace {

Family& familyOf(const Command& command, std::vector<Family>& families) {
    const auto name = command.name.substr(0, command.name.find(' '));
    const auto known = std::ranges::find(families, name, &Family::name);
    return known != families.end() ? *known
                                   : families.emplace_back(Family{.name = name, .summary = {}});
}

std::vector<Family> familiesOf(std::span<const Command> commands) {
    std::vector<Family> families;
    for (const auto& command : commands) {
        auto& family = familyOf(command, families);
        const bool isAlone = command.name == family.name;
        if (!isAlone)
            family.commands.push_back(&command);
        if (!isAlone && command.family.empty())
            continue;
        family.group = command.group;
        family.summary = isAlone ? command.summary : command.family;
        family.alone = &command;
    }
    return families;
}

OptionDescription flag(std::string_view name, std::string_view help, char letter = '\0') {
    return {.name = name, .help = help, .form = {.letter = letter}, .isFlag = true};
}

Section files() {
    return {"FILES",
            {{"$XDG_DATA_HOME/Tidemark", "The history; by default in ~/.local/share."},
             {"$XDG_CONFIG_HOME/Tidemark", "The settings; by default in ~/.config."},
             {"$XDG_RUNTIME_DIR/Tidemark",
              "The socket on which a running recorder takes commands of the same user."}}};
}

} // namespace

Program commandLine(std::span<const Command> commands) {
    return {
        .name = "tidemark",
        .summary = "record what changed on this computer",
        .description =
            {"Tidemark takes observations of metadata at regular intervals, compares each with the "
             "one before, and adds the differences to a timeline. Each change is shown with the "
             "time between the two observations. It keeps no copies of files and opens no network "
             "connection.",
             "A command is sent to the running recorder. If none is running, the process of the "
             "command does the work itself. Without a command, tidemark prints the list of them."},
        .options = {flag("help", "Print the help of the program or the command and exit", 'h'),
                    flag("version", "Print the version of the program and exit")},
        .families = familiesOf(commands),
        .sections = {{"EXIT STATUS",
                      {{"0", "Success."},
                       {"1", "Failure, with one sentence on standard error."},
                       {"2", "Wrong usage."},
                       {"75", "run --wait has left the history to the program with windows."}}},
                     files(),
                     {"ENVIRONMENT", {{"NO_COLOR", "When set, nothing is printed in colour."}}},
                     {"SEE ALSO", {{"tidemark-desktop(1)", "Records, with windows."}}}}};
}

Program desktop() {
    Program program{
        .name = "tidemark-desktop",
        .summary = "record what changed on this computer, and show it in a window",
        .description =
            {"tidemark-desktop records as \"tidemark run\" does, and shows the history in a "
             "window. Started again, it brings its window forward. It takes over from a recorder "
             "without a window; if that was a service, the service records again afterwards.",
             "Without a display it prints one sentence and exits with status 1. The options of "
             "every program with Qt, such as -platform, are taken, too."},
        .options = {},
        .sections = {files(), {"SEE ALSO", {{"tidemark(1)", "The command line."}}}}};
    for (const auto& [name, help] : desktopOptions::all)
        program.options.push_back(flag(name, help));
    return program;
}

std::vector<Continuation> continuations(const Program& program) {
    const auto with = [&](std::string_view words, const Command* command) {
        Continuation made{.command = words, .options = program.options};
        if (command)
            std::ranges::copy(command->options, std::back_inserter(made.options));
        return made;
    };
    std::vector<Continuation> all{with("", nullptr)};
    for (const auto& family : program.families) {
        all.front().words.push_back({family.name, family.summary});
        auto first = with(family.name, family.alone);
        for (const auto* command : family.commands) {
            first.words.push_back({command->name.substr(family.name.size() + 1), command->summary});
            all.push_back(with(command->name, command));
        }
        all.push_back(std::move(first));
    }
    return all;
}

std::vector<std::string> names(const OptionDescription& option) {
    if (option.form.isPositional)
        return {};
    std::vector<std::string> all;
    if (option.form.letter)
        all.push_back({'-', option.form.letter});
    all.push_back("--" + std::string(option.name));
    return all;
}

bool isPath(const OptionDescription& option) {
    const auto name = option.form.valueName;
    return !option.isFlag && (name == "PATH" || name == "FILE" || name == "DIR");
}

std::string replaced(std::string_view text, std::string_view from, std::string_view to) {
    std::string result(text);
    for (auto place = result.find(from); place != result.npos;
         place = result.find(from, place + to.size()))
        result.replace(place, from.size(), to);
    return result;
}

std::string inQuotes(std::string_view text) {
    return "'" + replaced(text, "'", R"('\'')") + "'";
}

} // namespace tidemark::manual
