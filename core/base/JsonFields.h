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

/// A record describes the fields that it stores once, next to its members:
///
///     struct Point {
///         double x = 0;
///         std::optional<std::string> path;
///         static constexpr auto fields() {
///             return std::tuple{Field{"x", &Point::x}, Field{"path", &Point::path, Private}};
///         }
///     };
///
/// A member of type `std::optional` or `OptionalShared` may be missing in a document; every other
/// is required. A `Shared` member may be marked as repeating:
///
/// Field{"sizes", &Point::sizes, Repeats}
///
/// In an array of records, it is then left out of every record where it is the same object as in
/// the record before. A `std::variant` of records that each have a `tag` is stored as an object
/// with one key, the `tag` of the record that it holds.
///
/// Two mistakes don't compile: a member that no field describes, which would never be stored, and a
/// field that can hold text but has no `Privacy`, which would appear in every exported report.
namespace tidemark::json {

/// What an exported report does with a field.
enum class Privacy {
    /// It is in every report.
    Shown,
    /// It is left out, and its text is replaced by a placeholder wherever it occurs in the same
    /// event.
    Private,
    /// It stays, but its text is replaced by a placeholder, here and wherever it occurs in the same
    /// event.
    Masked,
    /// It is left out, but not searched for in other fields: for texts that are too long for that.
    Omitted,
    /// It is left out even when private details are included: it means nothing outside of the
    /// program.
    Internal,
};
using enum Privacy;

/// Marks a field whose value mostly repeats from record to record.
struct RepeatsMark {};
inline constexpr RepeatsMark Repeats;

template <class T>
concept Described = requires { T::fields(); };

class JsonWriter;
class ValueReader;
/// The reader of a `T` for the decoder, defined in JsonReaders.h.
template <class T>
const ValueReader& readerOf();
/// Writes a record, defined in JsonEncoder.h.
template <Described T>
void encode(JsonWriter& out, const T& record);

template <class T>
inline constexpr bool isShared = false;
template <class T>
inline constexpr bool isShared<Shared<T>> = true;

namespace detail {

/// False for types that can't hold text (numbers, enumerations, dates), and for records, whose
/// fields have a `Privacy` of their own.
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
    bool repeats = false;

    constexpr Field(std::string_view name, Member Record::* member)
        : Field(name, member, Privacy::Shown) {
        static_assert(!detail::mayHoldText<Member>,
                      "this field can hold a path or a name: say Private, or Shown when every "
                      "exported report may hold it");
    }
    constexpr Field(std::string_view name, Member Record::* member, Privacy privacy)
        : name(name), member(member), privacy(privacy) {}
    constexpr Field(std::string_view name, Member Record::* member, RepeatsMark)
        : Field(name, member) {
        static_assert(isShared<Member>, "only a shared value can be the same as in another record");
        repeats = true;
    }
};

namespace detail {

/// Converts to any type; used as an initialiser to count the members of an aggregate.
struct AnyValue {
    template <class T>
    operator T() const;
};

/// Whether `Aggregate` has at least as many members as there are indices `I`.
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

/// True when no two fields have the same name or the same member.
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

/// Whether `Rows` is a tuple of `Field`; false for other descriptions, such as those of a command's
/// options.
template <class Rows>
inline constexpr bool areFields = false;
template <class... Owners, class... Values>
inline constexpr bool areFields<std::tuple<Field<Owners, Values>...>> = sizeof...(Owners) > 0;

/// Compiles only if `fields` describe every member of the record.
template <class T, class Fields>
constexpr void requireWhole() {
    constexpr auto fields = T::fields();
    // The class whose members are counted: for a record that inherits `fields()`, its base.
    using Record = typename std::tuple_element_t<0, Fields>::Record;
    constexpr std::size_t count = std::tuple_size_v<Fields>;
    static_assert(std::is_aggregate_v<Record>,
                  "the members of a record are counted, so it must be an aggregate: no "
                  "constructors, no private members");
    static_assert(areDistinct(fields), "a key or a member occurs twice in fields()");
    static_assert(!hasMembers<Record, count + 1>,
                  "a member of this record is missing in fields(), so it would never be stored");
    static_assert(hasMembers<Record, count>,
                  "fields() describes more than the members of this record");
    static_assert(sizeof(T) == sizeof(Record),
                  "a record that inherits its fields has a member that they don't describe");
}

} // namespace detail

/// `T::fields()`; does not compile unless they describe the whole record.
template <Described T>
constexpr auto fieldsOf() {
    constexpr auto fields = T::fields();
    using Fields = std::remove_const_t<decltype(fields)>;
    if constexpr (detail::areFields<Fields>)
        detail::requireWhole<T, Fields>();
    return fields;
}

/// Calls `visit` with each field of `T` that repeats.
template <Described T>
constexpr void forEachRepeated(auto visit) {
    std::apply(
        [&](const auto&... field) {
            const auto visitRepeated = [&](const auto& one) {
                if constexpr (isShared<typename std::remove_cvref_t<decltype(one)>::Member>)
                    if (one.repeats)
                        visit(one);
            };
            (visitRepeated(field), ...);
        },
        fieldsOf<T>());
}

namespace detail {

template <class T>
constexpr bool hasRepeated() {
    bool found = false;
    if constexpr (Described<T>)
        if constexpr (areFields<std::remove_const_t<decltype(T::fields())>>)
            forEachRepeated<T>([&](const auto&) { found = true; });
    return found;
}

} // namespace detail

/// A record with fields that repeat.
template <class T>
concept Repeating = detail::hasRepeated<T>();

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
using json::Repeats;
using enum json::Privacy;
} // namespace tidemark
