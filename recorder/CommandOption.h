#pragma once

#include "core/base/Error.h"

#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// A command was given in a way that it does not allow.
class UsageError : public Error {
public:
    using Error::Error;
};

/// How an option is written on a command line.
struct OptionForm {
    /// Of the short form, such as 'o' for "-o"; none when zero.
    char letter = '\0';
    /// Given by its place among the words, and not by its name.
    bool isPositional = false;
    bool isRequired = false;
    /// The name of an option that can't be given together with this one.
    std::string_view excludes{};
    /// What stands for the value in the help; by the type of the option, when empty.
    std::string_view valueName{};
};

/// One option of a command: a row of `Options::fields()`, which is all that the command line, the
/// help, the checks and the request to a running recorder are made of.
///
///     struct Options {
///         std::optional<std::int64_t> limit;
///         bool json = false;
///         static constexpr auto fields() {
///             return std::tuple{Option{"limit", &Options::limit, "Most events to show"},
///                               Option{"json", &Options::json, "Print JSON instead of text"}};
///         }
///     };
///
/// The name is also the key in a request. A `bool` is a flag; an `std::optional` may be left out;
/// an `std::vector` or `std::set` can be given several times.
template <class Record, class Member>
struct Option {
    std::string_view name;
    Member Record::* member;
    std::string_view help;
    OptionForm form{};
    /// Throws `UsageError` for a value that can't be taken. Called with each value of a command
    /// line or a request, also with the one that holds when the option is not given.
    void (*check)(const Member&) = nullptr;
};

/// An option without its type.
struct OptionDescription {
    std::string_view name;
    std::string_view help;
    OptionForm form;
    bool isFlag = false;
    bool isRepeated = false;
    /// What the value may be; empty when that can't be listed.
    std::vector<std::string> choices{};
};

} // namespace tidemark
