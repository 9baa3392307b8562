#pragma once

#include "core/base/JsonFields.h"
#include "core/base/Text.h"
#include "core/presentation/SystemWords.h"
#include "recorder/CommandOption.h"
#include "recorder/FilePath.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// The types that an option can have: how to parse a word of the command line, and how to check a
/// value from a command line or a request. Both throw `UsageError` with a text without a full stop.
namespace tidemark {

template <class T>
struct OptionValue;

/// Additional names for the values of an enumeration. Specialised where there are any.
template <class E>
inline constexpr std::array<json::RawValue<E>, 0> optionAliases{};

template <>
struct OptionValue<std::string> {
    static constexpr std::string_view valueName = "TEXT";
    static std::vector<std::string> choices() { return {}; }
    static std::string read(const std::string& word) { return word; }
    static void check(const std::string& text) {
        // Storing it would change the text.
        if (!isValidUtf8(text))
            throw UsageError("\"" + textFromBytes(text) + "\" is not UTF-8");
        if (text.find('\0') != std::string::npos)
            throw UsageError("a text can't hold a NUL character");
    }
};

template <>
struct OptionValue<std::int64_t> {
    static constexpr std::string_view valueName = "NUMBER";
    static std::vector<std::string> choices() { return {}; }
    static std::int64_t read(const std::string& word) {
        std::int64_t value = 0;
        const char* end = word.data() + word.size();
        const auto number = std::from_chars(word.data(), end, value);
        if (number.ec != std::errc() || number.ptr != end)
            throw UsageError("\"" + word + "\" is no whole number");
        return value;
    }
    static void check(std::int64_t) {}
};

template <>
struct OptionValue<FilePath> {
    static constexpr std::string_view valueName = "PATH";
    static std::vector<std::string> choices() { return {}; }
    static FilePath read(const std::string& word) { return FilePath::given(word); }
    static void check(const FilePath& path) { path.check(); }
};

/// Accepts the stored texts and aliases in any letter case. If a stored text names another system,
/// the help lists it in the words of this system, and both forms are accepted.
template <json::TextEnumeration E>
struct OptionValue<E> {
    static constexpr std::string_view valueName = "NAME";
    static std::vector<std::string> choices() {
        std::vector<std::string> all;
        for (const auto& known : json::rawValues<E>)
            all.emplace_back(systemWords::shown(known.text));
        for (const auto& known : optionAliases<E>)
            all.emplace_back(known.text);
        return all;
    }
    static E read(const std::string& word) {
        const auto isWord = [lower = asciiLowercased(word)](const auto& known) {
            return asciiLowercased(known.text) == lower
                   || asciiLowercased(systemWords::shown(known.text)) == lower;
        };
        for (const auto& known : json::rawValues<E>)
            if (isWord(known))
                return known.value;
        for (const auto& known : optionAliases<E>)
            if (isWord(known))
                return known.value;
        std::string names;
        for (const auto& name : choices())
            names += (names.empty() ? "" : ", ") + name;
        throw UsageError("\"" + word + "\" is none of " + names);
    }
    static void check(E) {}
};

template <class T>
struct OptionValue<std::optional<T>> : OptionValue<T> {
    static void add(std::optional<T>& to, const std::string& word) {
        to = OptionValue<T>::read(word);
    }
    static void check(const std::optional<T>& value) {
        if (value)
            OptionValue<T>::check(*value);
    }
};

/// Options that can be given several times.
template <class Container>
struct RepeatedOptionValue : OptionValue<typename Container::value_type> {
    using Element = OptionValue<typename Container::value_type>;
    static void add(Container& to, const std::string& word) {
        to.insert(to.end(), Element::read(word));
    }
    static void check(const Container& values) {
        for (const auto& value : values)
            Element::check(value);
    }
};
template <class T>
struct OptionValue<std::vector<T>> : RepeatedOptionValue<std::vector<T>> {};
template <class T>
struct OptionValue<std::set<T>> : RepeatedOptionValue<std::set<T>> {};

template <class T>
inline constexpr bool isRepeatedOption = false;
template <class T>
inline constexpr bool isRepeatedOption<std::vector<T>> = true;
template <class T>
inline constexpr bool isRepeatedOption<std::set<T>> = true;

} // namespace tidemark
