#pragma once

#include "core/base/Data.h"
#include "core/base/Date.h"
#include "core/base/Shared.h"
#include "core/base/Uuid.h"

#include <array>
#include <cstddef>
#include <optional>
#include <set>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

/// How a record describes what it stores: once, beside its members.
///
///     struct Point {
///         double x = 0;
///         std::optional<std::string> path;
///         static constexpr auto fields() {
///             return std::tuple{Field{"x", &Point::x}, Field{"path", &Point::path, Private}};
///         }
///     };
///
/// A member of type `std::optional` or `OptionalShared` may be missing; every other is required.
/// A `std::variant` of records that each have a `tag` is stored as an object with that one key.
///
/// Two mistakes don't compile: a member that no field describes, which would never be stored, and
/// a field that can hold text without a `Privacy`, which would leave the computer in every report.
namespace tidemark::json {

/// What becomes of a field in an exported report.
enum class Privacy {
    /// It stands in every report.
    Shown,
    /// It is left out, and wherever else in the event its text occurs, it is replaced by a mark.
    Private,
    /// It stays, but its text is replaced by a mark, here and wherever else it occurs.
    Masked,
    /// It is left out. For what is too long to be looked for elsewhere.
    Omitted,
    /// It means nothing outside of the program, and is left out even where `Private` fields stay.
    Internal,
};
using enum Privacy;

template <class T>
concept Described = requires { T::fields(); };

namespace detail {

/// True unless values of the type are known to hold no text: numbers, enumerations, dates, and
/// records, whose own fields decide.
template <class T>
inline constexpr bool mayHoldText = !(std::is_arithmetic_v<T> || std::is_enum_v<T> || Described<T>);
template <>
inline constexpr bool mayHoldText<Date> = false;
template <>
inline constexpr bool mayHoldText<Uuid> = false;
template <class T>
inline constexpr bool mayHoldText<std::optional<T>> = mayHoldText<T>;
template <class T>
inline constexpr bool mayHoldText<Shared<T>> = mayHoldText<T>;
template <class T>
inline constexpr bool mayHoldText<OptionalShared<T>> = mayHoldText<T>;
template <class T>
inline constexpr bool mayHoldText<std::vector<T>> = mayHoldText<T>;
template <class T>
inline constexpr bool mayHoldText<std::set<T>> = mayHoldText<T>;
template <class... Cases>
inline constexpr bool mayHoldText<std::variant<Cases...>> = (mayHoldText<Cases> || ...);

} // namespace detail

template <class Owner, class Value>
struct Field {
    using Record = Owner;
    using Member = Value;

    std::string_view name;
    Member Record::* member;
    Privacy privacy;

    constexpr Field(std::string_view key, Member Record::* place)
        : Field(key, place, Privacy::Shown) {
        static_assert(!detail::mayHoldText<Member>,
                      "this field can hold a path or a name: say Private, or Shown when every "
                      "exported report may hold it");
    }
    constexpr Field(std::string_view key, Member Record::* place, Privacy decided)
        : name(key), member(place), privacy(decided) {}
};

namespace detail {

/// Stands for an initialiser of any type while the members of an aggregate are counted.
struct AnyValue {
    template <class T>
    operator T() const;
};

/// True when `Aggregate` has at least as many members as there are indices.
template <class Aggregate, std::size_t... I>
constexpr bool takesInitialisers(std::index_sequence<I...>) {
    return requires { Aggregate{(static_cast<void>(I), AnyValue{})...}; };
}
template <class Aggregate, std::size_t count>
inline constexpr bool hasMembers = takesInitialisers<Aggregate>(std::make_index_sequence<count>());

template <class First, class Second>
constexpr bool sameMember(const First& first, const Second& second) {
    if constexpr (std::is_same_v<First, Second>)
        return first.name == second.name || first.member == second.member;
    else
        return first.name == second.name;
}

/// True when no name and no member comes twice.
template <class... Fields>
constexpr bool areDistinct(const std::tuple<Fields...>& fields) {
    const auto occurrences = [&](const auto& field) {
        return std::apply([&](const auto&... all) { return (sameMember(field, all) + ... + 0); },
                          fields);
    };
    return std::apply([&](const auto&... all) { return ((occurrences(all) == 1) && ...); }, fields);
}

} // namespace detail

namespace detail {

/// False for the rows of other descriptions, such as those of a command's options.
template <class Rows>
inline constexpr bool areFields = false;
template <class... Owners, class... Values>
inline constexpr bool areFields<std::tuple<Field<Owners, Values>...>> = sizeof...(Owners) > 0;

/// Compiles where `fields` describe the whole record.
template <class T, class Fields>
constexpr void requireWhole() {
    constexpr auto fields = T::fields();
    // A record may inherit its fields, and then has no members of its own.
    using Record = typename std::tuple_element_t<0, Fields>::Record;
    constexpr std::size_t count = std::tuple_size_v<Fields>;
    static_assert(std::is_aggregate_v<Record>,
                  "the members of a record are counted, which takes one without constructors and "
                  "private members");
    static_assert(areDistinct(fields), "a key or a member stands twice in fields()");
    static_assert(!hasMembers<Record, count + 1>,
                  "a member of this record is missing in fields(), so it would never be stored");
    static_assert(hasMembers<Record, count>,
                  "fields() describes more than the members of this record");
    static_assert(sizeof(T) == sizeof(Record),
                  "a record that inherits its fields has a member that they don't describe");
}

} // namespace detail

/// `T::fields()`, once it is certain that they describe the whole record.
template <Described T>
constexpr auto fieldsOf() {
    constexpr auto fields = T::fields();
    using Fields = std::remove_const_t<decltype(fields)>;
    if constexpr (detail::areFields<Fields>)
        detail::requireWhole<T, Fields>();
    return fields;
}

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
using enum json::Privacy;
} // namespace tidemark
