#include "cli/CommandLine.h"

#include <algorithm>
#include <map>
#include <sstream>

#include <CLI/CLI.hpp>

namespace tidemark {

namespace {

constexpr const char* description =
    "Tidemark records what changed on this computer. Everything stays on the machine.";

std::string uppercased(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    return result;
}

/// The names of the option in the notation of the parser: "PATH", "--limit", "-o,--output".
std::string parserName(const OptionDescription& option) {
    if (option.form.isPositional)
        return uppercased(option.name);
    const std::string letter =
        option.form.letter ? std::string{'-', option.form.letter, ','} : std::string();
    return letter + "--" + std::string(option.name);
}

/// The placeholder for the value in the help, such as "NAME:{csv,json}".
std::string valueText(const OptionDescription& option) {
    std::string text(option.form.valueName);
    for (const auto& choice : option.choices)
        text += (choice == option.choices.front() ? ":{" : ",") + choice;
    return option.choices.empty() ? text : text + "}";
}

/// Parses one command line by the table of commands.
class Parser {
public:
    explicit Parser(std::span<const Command> commands) : app(description, "tidemark") {
        app.set_version_flag("--version", "tidemark " TIDEMARK_VERSION);
        app.set_help_flag("-h,--help", "Print this help and exit");
        app.require_subcommand(0, 1);
        for (const auto& command : commands)
            add(command);
    }

    CommandLine parse(std::vector<std::string> words) {
        // CLI11 takes the words in reverse order.
        std::ranges::reverse(words);
        try {
            app.parse(std::move(words));
        } catch (const CLI::ParseError& error) {
            return {.text = textOf(error)};
        }
        return chosen();
    }

private:
    struct Entry {
        const CLI::App* parser;
        const Command* command;
        std::unique_ptr<Invocation> invocation;
    };

    /// The text of help or version, which CLI11 reports as errors as well. Throws `UsageError` for
    /// other errors.
    std::string textOf(const CLI::ParseError& error) const {
        if (error.get_exit_code() != 0)
            throw UsageError(error.what());
        std::ostringstream text;
        app.exit(error, text, text);
        return text.str();
    }

    CommandLine chosen() {
        // Commands are checked before families, because the parser of a family counts as parsed
        // also when one of its commands was given.
        for (auto* candidates : {&entries, &families})
            for (auto& [parser, command, invocation] : *candidates)
                if (parser->parsed()) {
                    invocation->check();
                    return {.command = command, .invocation = std::move(invocation)};
                }
        for (const auto& [name, family] : familyParsers)
            if (family->parsed())
                return {.text = family->help(app.get_name())};
        return {.text = app.help()};
    }

    void add(const Command& command) {
        const auto space = command.name.find(' ');
        if (space == std::string_view::npos) {
            addEntry(parserFor(app, command.name, command), command);
            return;
        }
        auto& family = familyFor(command);
        addEntry(parserFor(family, command.name.substr(space + 1), command), command);
        if (!command.family.empty())
            family.description(std::string(command.family));
        if (command.answersFamily())
            addOptions(families.emplace_back(Entry{&family, &command, command.invoke()}), family);
    }

    CLI::App& parserFor(CLI::App& parent, std::string_view name, const Command& command) {
        auto& added = *parent.add_subcommand(std::string(name), std::string(command.summary));
        added.set_version_flag("--version", app.version());
        added.footer(std::string(command.details));
        if (&parent == &app)
            added.group(std::string(title(command.group)));
        return added;
    }

    CLI::App& familyFor(const Command& command) {
        const std::string name(command.name.substr(0, command.name.find(' ')));
        auto& known = familyParsers[name];
        if (known)
            return *known;
        auto& added = parserFor(app, name, command);
        known = &added;
        added.footer("");
        added.require_subcommand(0, 1);
        return added;
    }

    void addEntry(CLI::App& parser, const Command& command) {
        addOptions(entries.emplace_back(Entry{&parser, &command, command.invoke()}), parser);
    }

    void addOptions(const Entry& entry, CLI::App& parser) {
        const auto& options = entry.command->options;
        for (std::size_t place = 0; place < options.size(); ++place)
            addOption(parser, options[place], place, *entry.invocation);
    }

    /// Takes the words unchanged: CLI11 would split some of them into lists.
    void addOption(CLI::App& parser, const OptionDescription& option, std::size_t place,
                   Invocation& invocation) {
        const CLI::callback_t take = [place, &invocation](const CLI::results_t& words) {
            invocation.setOption(place, words);
            return true;
        };
        const std::string help(option.help);
        if (option.isFlag) {
            parser.add_flag_callback(parserName(option), [take] { take({}); }, help);
            return;
        }
        auto& added = *parser.add_option(parserName(option), take, help);
        added.type_name(valueText(option))->required(option.form.isRequired);
        if (option.isRepeated)
            added.expected(1)->take_all();
    }

    CLI::App app;
    std::map<std::string, CLI::App*> familyParsers;
    std::vector<Entry> entries;
    /// Commands that are also run when only the first word of their name is given, such as
    /// `folders`.
    std::vector<Entry> families;
};

} // namespace

CommandLine CommandLine::parse(std::span<const Command> commands, std::vector<std::string> words) {
    return Parser(commands).parse(std::move(words));
}

} // namespace tidemark
