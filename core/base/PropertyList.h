#pragma once

#include "core/base/Data.h"
#include "core/base/Date.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// Property lists, in their XML and their binary form ("bplist00"), read by libplist.
namespace tidemark::PropertyList {

struct Value;
using Array = std::vector<Value>;
using Dictionary = std::map<std::string, Value, std::less<>>;

/// What only a keyed archive holds: references between its objects.
struct Other {
    bool operator==(const Other&) const = default;
};

/// One value with all that lies in it. Text is UTF-8 as `textFromBytes` makes it. An integer that
/// only fits an unsigned 64-bit number is a `double`.
struct Value {
    std::variant<Other, bool, std::int64_t, double, std::string, Data, Date, Array, Dictionary>
        content;

    /// Null when the value is of another type.
    template <class T>
    const T* as() const {
        return std::get_if<T>(&content);
    }

    bool operator==(const Value&) const = default;
};

/// The value of a key; null when the key is missing.
const Value* find(const Dictionary& dictionary, std::string_view key);

/// The value of a key; null when the key is missing or its value of another type.
template <class T>
const T* find(const Dictionary& dictionary, std::string_view key) {
    const Value* value = find(dictionary, key);
    return value ? value->as<T>() : nullptr;
}

/// A list beyond any of these is not read. The metadata of the largest applications stays below
/// a tenth of each.
inline constexpr std::size_t maximumSize = std::size_t{16} << 20;
inline constexpr std::size_t maximumDepth = 100;
inline constexpr std::size_t maximumNodes = 50'000;

enum class Failure {
    /// Neither XML nor binary property list, or a broken one.
    malformed,
    /// Too large, too deep, or made to cost more time or memory than any honest list.
    beyondLimits,
};

std::expected<Value, Failure> parse(std::string_view bytes);

} // namespace tidemark::PropertyList
