#pragma once

#include "recorder/CommandOption.h"

#include <QCoroTask>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

struct CommandContext;
class StoredRecords;

/// What a command prints.
struct CommandAnswer {
    std::string text;
    /// What could not be read beside it, each in a sentence.
    std::vector<std::string> problems{};
};

/// A command with the values of its options: what a command line is parsed into, what a request
/// carries, and what is carried out. The options keep their type behind this; see
/// `TypedInvocation`.
class Invocation {
public:
    virtual ~Invocation() = default;

    /// Sets the option with this place in `Command::options` to the words that it was given with,
    /// one a value, none for a flag. Throws `UsageError` for a word that is no value of it.
    virtual void setOption(std::size_t option, const std::vector<std::string>& words) = 0;
    /// All options as JSON.
    virtual std::string options() const = 0;
    /// The options of a request. Throws `Error` when anything is missing, of a wrong type, or
    /// refused by a check.
    virtual void setOptions(std::string_view json) = 0;
    /// Throws `UsageError` unless every value is one that the options allow.
    virtual void check() const = 0;

    /// What the user is asked before it is carried out; absent when nothing needs to be asked.
    virtual std::optional<std::string> question() const = 0;
    /// The file that takes the answer in place of standard output, if any.
    virtual std::optional<std::filesystem::path> outputFile() const = 0;

    /// Its answer does not take long, and may come from the stored records.
    virtual bool isReading() const = 0;
    /// Carries it out in the process that was given it, whether a recorder runs or not. Absent for
    /// a command that a recorder answers. Returns the exit status. Throws `Error`.
    virtual std::optional<int> runHere() const = 0;
    /// Answers from the stored records where no recorder runs, without taking the data folder.
    /// Absent when the command needs the folder. Blocks. Throws `Error`.
    virtual std::optional<CommandAnswer> answerFromStored(StoredRecords& stored) const = 0;
    /// In the process that has the data folder. The object has to outlive the task. Throws `Error`.
    virtual QCoro::Task<std::string> carryOut(CommandContext& context) const = 0;
};

/// The headings of the help, in their order.
enum class CommandGroup { recording, history, choices, observations };

constexpr std::string_view title(CommandGroup group) {
    switch (group) {
    case CommandGroup::recording:
        return "Recording";
    case CommandGroup::history:
        return "History";
    case CommandGroup::choices:
        return "Choices";
    case CommandGroup::observations:
        return "Observations apart from the history";
    }
    return {};
}

/// One command: all that the command line, the help and the dispatch know of it.
struct Command {
    /// The words of the command line: "status" or "snapshot list".
    std::string_view name;
    CommandGroup group{};
    std::string_view summary;
    /// More than the summary, for the help of this command; may be empty.
    std::string_view details{};
    /// What the commands with the same first word are for. Given for one of them, which is also
    /// carried out for that word alone.
    std::string_view family{};

    std::vector<OptionDescription> options{};
    /// A new one, with the options as they are when none is given.
    std::function<std::unique_ptr<Invocation>()> invoke{};
};

} // namespace tidemark
