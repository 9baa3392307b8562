#pragma once

#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"
#include "recorder/Command.h"
#include "recorder/CommandContext.h"
#include "recorder/HistoryReading.h"
#include "recorder/OptionValue.h"
#include "recorder/SettingsReading.h"

#include <functional>
#include <memory>
#include <tuple>
#include <type_traits>

/// Makes a command from its options and the function that answers it.
namespace tidemark {

/// A command is answered by one of the four kinds of functions below; the kind determines where it
/// runs. All throw `Error`.

/// Always runs in the process of the command line. Returns the exit status.
template <class Options>
using AnswerHere = int (*)(const Options&);

/// Runs wherever the settings can be read.
template <class Options>
using AnswerFromSettings = std::string (*)(const SettingsReading&, const Options&);

/// Runs wherever the history can be read, in the background, since formatting a long history takes
/// time.
template <class Options>
using AnswerFromHistory = std::string (*)(const HistoryReading&, const Options&);

/// Runs in the process that has locked the data folder: the running recorder, or else the process
/// of the command line.
template <class Options>
using AnswerByRecorder = QCoro::Task<std::string> (*)(CommandContext&, const Options&);

/// Optional properties of a command.
template <class Options>
struct CommandExtras {
    /// True when `AnswerByRecorder` changes settings, so that the command must fail if they can't
    /// be stored.
    bool changesSettings = false;
    /// Used instead of `AnswerByRecorder` when no recorder is running. Returns nothing when the
    /// command needs the data folder.
    std::optional<CommandAnswer> (*fromStored)(StoredRecords&, const Options&) = nullptr;
    /// See `Invocation`.
    bool (*needsProgram)(const Options&) = nullptr;
    std::optional<std::string> (*question)(const Options&) = nullptr;
    std::optional<std::filesystem::path> (*outputFile)(const Options&) = nullptr;
};

namespace detail {

using SettingsReader = std::function<std::string(const SettingsReading&)>;
using HistoryReader = std::function<std::string(const HistoryReading&)>;

CommandAnswer storedSettings(StoredRecords& stored, const SettingsReader& answer);
CommandAnswer storedHistory(StoredRecords& stored, const HistoryReader& answer);
QCoro::Task<std::string> liveSettings(CommandContext& context, SettingsReader answer);
QCoro::Task<std::string> liveHistory(CommandContext& context, HistoryReader answer);
/// Awaits `change` and throws when the changed settings can't be stored.
QCoro::Task<std::string> storedChange(CommandContext& context, QCoro::Task<std::string> change);

/// Adds the name of the option to the error of a check.
template <class Check>
void checkOption(std::string_view name, const OptionForm& form, const Check& check) {
    try {
        check();
    } catch (const UsageError& error) {
        throw UsageError((form.isPositional ? "" : "--") + std::string(name) + ": " + error.what());
    }
}

} // namespace detail

/// `answer` is one of the four functions.
template <class Options, auto answer>
class TypedInvocation final : public Invocation {
    using Answer = decltype(answer);
    static constexpr bool isHere = std::is_same_v<Answer, AnswerHere<Options>>;
    static constexpr bool isFromSettings = std::is_same_v<Answer, AnswerFromSettings<Options>>;
    static constexpr bool isFromHistory = std::is_same_v<Answer, AnswerFromHistory<Options>>;
    static constexpr bool isByRecorder = std::is_same_v<Answer, AnswerByRecorder<Options>>;
    static_assert(isHere || isFromSettings || isFromHistory || isByRecorder,
                  "a command is answered by a function of one of the four kinds");

public:
    explicit TypedInvocation(const CommandExtras<Options>& extras) : extras(extras) {}

    void setOption(std::size_t place, const std::vector<std::string>& words) override {
        std::size_t index = 0;
        forEachOption([&](const auto& option) {
            if (index++ == place)
                detail::checkOption(option.name, option.form,
                                    [&] { set(values.*option.member, words); });
        });
    }

    std::string options() const override { return json::encoded(values); }

    void setOptions(std::string_view json) override {
        values = json::decode<Options>(json);
        check();
    }

    void check() const override {
        forEachOption([&](const auto& option) {
            detail::checkOption(option.name, option.form,
                                [&] { checkValue(values.*option.member, option.check); });
            for (const auto& excluded : option.form.excludes)
                if (!excluded.empty() && isGiven(option.name) && isGiven(excluded))
                    throw UsageError("--" + std::string(option.name)
                                     + " can't be given together with --" + std::string(excluded));
        });
    }

    std::optional<std::string> question() const override {
        return extras.question ? extras.question(values) : std::nullopt;
    }
    std::optional<std::filesystem::path> outputFile() const override {
        return extras.outputFile ? extras.outputFile(values) : std::nullopt;
    }

    bool isReading() const override {
        return isFromSettings || isFromHistory || extras.fromStored != nullptr;
    }

    bool needsProgram() const override {
        return extras.needsProgram && extras.needsProgram(values);
    }

    std::optional<int> runHere() const override {
        if constexpr (isHere)
            return answer(values);
        return std::nullopt;
    }

    std::optional<CommandAnswer>
    answerFromStored([[maybe_unused]] StoredRecords& stored) const override {
        if constexpr (isFromSettings)
            return detail::storedSettings(stored, bound());
        else if constexpr (isFromHistory)
            return detail::storedHistory(stored, bound());
        else
            return extras.fromStored ? extras.fromStored(stored, values) : std::nullopt;
    }

    QCoro::Task<std::string> carryOut([[maybe_unused]] CommandContext& context) const override {
        if constexpr (isFromSettings)
            return detail::liveSettings(context, bound());
        else if constexpr (isFromHistory)
            return detail::liveHistory(context, bound());
        else if constexpr (isByRecorder)
            return extras.changesSettings ? detail::storedChange(context, answer(context, values))
                                          : answer(context, values);
        else
            throw Error("This command can't be handed to a recorder.");
    }

    static std::vector<OptionDescription> describeOptions() {
        std::vector<OptionDescription> all;
        forEachOption([&](const auto& option) { all.push_back(described(option)); });
        return all;
    }

private:
    static void forEachOption(const auto& use) {
        std::apply([&](const auto&... option) { (use(option), ...); }, Options::fields());
    }

    template <class Record, class Member>
    static OptionDescription described(const Option<Record, Member>& option) {
        OptionDescription text{option.name, option.help, option.form};
        if constexpr (std::is_same_v<Member, bool>) {
            text.isFlag = true;
        } else {
            text.isRepeated = isRepeatedOption<Member>;
            text.choices = OptionValue<Member>::choices();
            if (text.form.valueName.empty())
                text.form.valueName = OptionValue<Member>::valueName;
        }
        return text;
    }

    template <class Member>
    static void set(Member& member, const std::vector<std::string>& words) {
        if constexpr (std::is_same_v<Member, bool>)
            member = true;
        else if constexpr (requires { OptionValue<Member>::add(member, words.front()); })
            for (const auto& word : words)
                OptionValue<Member>::add(member, word);
        else
            member = OptionValue<Member>::read(words.back());
    }

    template <class Member>
    static void checkValue(const Member& value, void (*further)(const Member&)) {
        if constexpr (!std::is_same_v<Member, bool>)
            OptionValue<Member>::check(value);
        if (further)
            further(value);
    }

    bool isGiven(std::string_view name) const {
        const Options none{};
        bool given = false;
        forEachOption([&](const auto& option) {
            if (option.name == name)
                given = !(values.*option.member == none.*option.member);
        });
        return given;
    }

    auto bound() const {
        return [this](const auto& source) { return answer(source, values); };
    }

    const CommandExtras<Options> extras;
    Options values;
};

/// Makes a command from its texts: `makeCommand<Options, answer>({.name = …})`.
template <class Options, auto answer>
Command makeCommand(Command description, CommandExtras<Options> extras = {}) {
    using Typed = TypedInvocation<Options, answer>;
    description.options = Typed::describeOptions();
    description.invoke = [extras] { return std::make_unique<Typed>(extras); };
    return description;
}

} // namespace tidemark
