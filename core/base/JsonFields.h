#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>

/// How a record tells the codec what it stores: once, beside its members.
///
///     struct Point {
///         double x = 0;
///         std::optional<double> z;
///         static constexpr auto fields() {
///             return std::tuple{Field{"x", &Point::x}, Field{"z", &Point::z}};
///         }
///     };
///
/// A member of type `std::optional` or `OptionalShared` may be missing; every other is required.
/// A `std::variant` of records that each have a `tag` is stored as an object with that one key.
namespace tidemark::json {

template <class Record, class Member>
struct Field {
    std::string_view name;
    Member Record::* member;
};

template <class T>
concept Described = requires { T::fields(); };

template <class E>
struct RawValue {
    E value;
    std::string_view text;
};

/// The stored text of each case of an enumeration, in declared order. Specialised per enumeration.
template <class E>
inline constexpr std::array<RawValue<E>, 0> rawValues{};

template <class E>
concept TextEnumeration = std::is_enum_v<E> && rawValues<E>.size() > 0;

template <TextEnumeration E>
constexpr std::string_view rawValue(E value) {
    for (const auto& entry : rawValues<E>)
        if (entry.value == value)
            return entry.text;
    return {};
}

template <TextEnumeration E>
constexpr std::optional<E> fromRawValue(std::string_view text) {
    for (const auto& entry : rawValues<E>)
        if (entry.text == text)
            return entry.value;
    return std::nullopt;
}

} // namespace tidemark::json

namespace tidemark {
using json::Field;
using json::rawValue;
} // namespace tidemark
