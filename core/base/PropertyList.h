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

/// A reference between the objects of a keyed archive; its content is not read.
struct Other {
    bool operator==(const Other&) const = default;
};

/// A value of any type, with all values that it contains. Text is UTF-8 as `textFromBytes` makes
/// it. An integer above the signed 64-bit range is a `double`.
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

/// A list beyond any of these limits is not read: bytes, levels of nesting, and values. The largest
/// metadata of real applications stays below a tenth of each.
inline constexpr std::size_t maximumSize = std::size_t{16} << 20;
inline constexpr std::size_t maximumDepth = 100;
inline constexpr std::size_t maximumNodes = 50'000;

enum class Failure {
    /// Neither an XML nor a binary property list, or a damaged one.
    malformed,
    /// Too large, too deep, or constructed to take excessive time or memory.
    beyondLimits,
};

std::expected<Value, Failure> parse(std::string_view bytes);

} // namespace tidemark::PropertyList
