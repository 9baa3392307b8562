#pragma once

#include "core/base/Error.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// A command was used in a wrong way.
class UsageError : public Error {
public:
    using Error::Error;
};

/// How an option is written on a command line.
struct OptionForm {
    /// The letter of the short form, such as 'o' for "-o"; 0 if there is none.
    char letter = '\0';
    /// True when it is given by position and not by name.
    bool isPositional = false;
    bool isRequired = false;
    /// The names of the options that can't be given together with this one; empty names have no
    /// effect.
    std::array<std::string_view, 5> excludes{};
    /// The placeholder of the value in the help; if empty, one that depends on the type.
    std::string_view valueName{};
};

/// One option of a command: a row of `Options::fields()`. The command line, the help, the checks
/// and the request to a running recorder are all derived from these rows.
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
    /// Throws `UsageError` for an invalid value. Called for every option of a command line or a
    /// request, also with the default value.
    void (*check)(const Member&) = nullptr;
};

/// The properties of an option without its type.
struct OptionDescription {
    std::string_view name;
    std::string_view help;
    OptionForm form;
    bool isFlag = false;
    bool isRepeated = false;
    /// The possible values; empty when they can't be listed.
    std::vector<std::string> choices{};
};

} // namespace tidemark
