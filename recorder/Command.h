#pragma once

#include "recorder/CommandOption.h"

#include <QCoroTask>
#include <algorithm>
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

/// The output of a command.
struct CommandAnswer {
    std::string text;
    /// Files that could not be read in addition, each as a sentence.
    std::vector<std::string> problems{};
};

/// A command with the values of its options. Command lines are parsed into one, requests contain
/// one, and it can be carried out. `TypedInvocation` implements it for each type of options.
class Invocation {
public:
    virtual ~Invocation() = default;

    /// Sets the option at this index of `Command::options` to the given words, one per value, none
    /// for a flag. Throws `UsageError` for an invalid value.
    virtual void setOption(std::size_t option, const std::vector<std::string>& words) = 0;
    /// All options as JSON.
    virtual std::string options() const = 0;
    /// Sets all options from the JSON of a request. Throws `Error` when anything is missing, of a
    /// wrong type or invalid.
    virtual void setOptions(std::string_view json) = 0;
    /// Throws `UsageError` when a value is not allowed.
    virtual void check() const = 0;

    /// The question to confirm the command; absent when none is needed.
    virtual std::optional<std::string> question() const = 0;
    /// The file for the output instead of standard output, if any.
    virtual std::optional<std::filesystem::path> outputFile() const = 0;

    /// True for a command that only reads: it does not take long and can be answered from stored
    /// records.
    virtual bool isReading() const = 0;
    /// True for what only a running program can do, such as showing a window. Without one,
    /// `answerFromStored` throws.
    virtual bool needsProgram() const = 0;
    /// Carries out a command that always runs in this process, and returns the exit status. Absent
    /// for a command that the recorder answers. Throws `Error`.
    virtual std::optional<int> runHere() const = 0;
    /// Answers from the stored records when no recorder is running, without locking the data
    /// folder. Absent when the command needs the lock. Blocks. Throws `Error`.
    virtual std::optional<CommandAnswer> answerFromStored(StoredRecords& stored) const = 0;
    /// Carries out the command in the process that has locked the data folder. This object must
    /// outlive the task. Throws `Error`.
    virtual QCoro::Task<std::string> carryOut(CommandContext& context) const = 0;
};

/// The headings in the help, in order.
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

/// One command, with everything that the command line, the help and the dispatch need.
struct Command {
    /// The words on the command line: "status" or "snapshot list".
    std::string_view name;
    CommandGroup group{};
    std::string_view summary;
    /// More text for the help of this command; may be empty.
    std::string_view details{};
    /// The summary of all commands with the same first word; set for one of them.
    std::string_view family{};

    std::vector<OptionDescription> options{};
    /// Makes an invocation with the default options.
    std::function<std::unique_ptr<Invocation>()> invoke{};

    /// True for the command that is also carried out when only its first word is given: that with
    /// `family`, unless it needs more words.
    bool answersFamily() const {
        return !family.empty() && std::ranges::none_of(options, [](const auto& option) {
            return option.form.isRequired;
        });
    }
};

} // namespace tidemark
