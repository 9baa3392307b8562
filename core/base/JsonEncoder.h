#pragma once

#include "core/base/Base64.h"
#include "core/base/Data.h"
#include "core/base/Date.h"
#include "core/base/JsonFields.h"
#include "core/base/JsonWriter.h"
#include "core/base/Shared.h"
#include "core/base/Uuid.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/// The writing side of the codec: writes any stored record as JSON, from its list of fields.
namespace tidemark::json {

inline void encode(JsonWriter& out, const std::string& value) {
    out.text(value);
}
inline void encode(JsonWriter& out, bool value) {
    out.boolean(value);
}
inline void encode(JsonWriter& out, std::int64_t value) {
    out.integer(value);
}
inline void encode(JsonWriter& out, double value) {
    out.real(value);
}
inline void encode(JsonWriter& out, Date value) {
    out.date(value);
}
inline void encode(JsonWriter& out, const Uuid& value) {
    out.text(value.text());
}
inline void encode(JsonWriter& out, const Data& value) {
    out.text(base64Encoded(value.bytes));
}

template <TextEnumeration E>
void encode(JsonWriter& out, E value) {
    out.text(rawValue(value));
}
template <class T>
void encode(JsonWriter& out, const Shared<T>& value);
template <class T>
void encode(JsonWriter& out, const std::vector<T>& values);
template <class T>
void encode(JsonWriter& out, const std::set<T>& values);
template <class T>
void encode(JsonWriter& out, const std::map<std::string, T>& values);
template <Described T>
void encode(JsonWriter& out, const T& record);
template <class... Cases>
void encode(JsonWriter& out, const std::variant<Cases...>& value);

namespace detail {

template <class T>
void encodeMember(JsonWriter& out, std::string_view name, const T& value) {
    out.key(name);
    encode(out, value);
}
template <class T>
void encodeMember(JsonWriter& out, std::string_view name, const std::optional<T>& value) {
    if (value)
        encodeMember(out, name, *value);
}
template <class T>
void encodeMember(JsonWriter& out, std::string_view name, const OptionalShared<T>& value) {
    if (value)
        encodeMember(out, name, *value);
}

template <class Values>
void encodeArray(JsonWriter& out, const Values& values) {
    out.beginArray();
    for (const auto& value : values)
        encode(out, value);
    out.endArray();
}

/// Writes a record. If `before` is given, fields marked `Repeats` are left out where `before` has
/// the same object.
template <Described T>
void encodeRecord(JsonWriter& out, const T& record, const T* before) {
    const auto isLeftOut = [&]<class Field>(const Field& field) {
        if constexpr (isShared<typename Field::Member>)
            return field.repeats && before
                   && (record.*field.member).sameObject(before->*field.member);
        return false;
    };
    const auto encodeField = [&](const auto& field) {
        if (!isLeftOut(field))
            encodeMember(out, field.name, record.*field.member);
    };
    out.beginObject();
    std::apply([&](const auto&... field) { (encodeField(field), ...); }, fieldsOf<T>());
    out.endObject();
}

template <Repeating T>
void encodeArray(JsonWriter& out, const std::vector<Shared<T>>& records) {
    const T* before = nullptr;
    out.beginArray();
    for (const auto& record : records)
        encodeRecord(out, *record, std::exchange(before, &*record));
    out.endArray();
}

} // namespace detail

template <class T>
void encode(JsonWriter& out, const Shared<T>& value) {
    encode(out, *value);
}
template <class T>
void encode(JsonWriter& out, const std::vector<T>& values) {
    detail::encodeArray(out, values);
}
template <class T>
void encode(JsonWriter& out, const std::set<T>& values) {
    detail::encodeArray(out, values);
}
template <class T>
void encode(JsonWriter& out, const std::map<std::string, T>& values) {
    out.beginObject();
    for (const auto& [key, value] : values)
        detail::encodeMember(out, key, value);
    out.endObject();
}
template <Described T>
void encode(JsonWriter& out, const T& record) {
    if constexpr (Repeating<T>) {
        detail::encodeRecord<T>(out, record, nullptr);
    } else {
        out.beginObject();
        std::apply(
            [&](const auto&... field) {
                (detail::encodeMember(out, field.name, record.*field.member), ...);
            },
            fieldsOf<T>());
        out.endObject();
    }
}
template <class... Cases>
void encode(JsonWriter& out, const std::variant<Cases...>& value) {
    std::visit(
        [&]<class Case>(const Case& payload) {
            out.beginObject();
            detail::encodeMember(out, Case::tag, payload);
            out.endObject();
        },
        value);
}

/// Passes the JSON of `value` to `output` piece by piece.
template <class T>
void write(const T& value, JsonWriter::Output output,
           JsonWriter::DateForm dates = JsonWriter::DateForm::seconds) {
    JsonWriter out(std::move(output), dates);
    encode(out, value);
    out.finish();
}

/// The whole JSON text of `value`.
template <class T>
std::string encoded(const T& value, JsonWriter::DateForm dates = JsonWriter::DateForm::seconds) {
    std::string text;
    write(value, [&](std::string_view piece) { text += piece; }, dates);
    return text;
}

} // namespace tidemark::json
