#pragma once

#include "core/base/Base64.h"
#include "core/base/Data.h"
#include "core/base/Date.h"
#include "core/base/InternPool.h"
#include "core/base/JsonFields.h"
#include "core/base/Shared.h"
#include "core/base/Uuid.h"

#include <bit>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

/// The readers, one for each type, fill values from the tokens of a JSON document. They are
/// stateless; the decoder keeps track of the position in the document.
namespace tidemark::json {

/// What is wrong with a value; the decoder adds its path in the document.
struct ValueError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

[[noreturn]] void throwUnknownValue(std::string_view text);

class ValueReader;

/// A value to fill and the reader for its type. With a null reader the value is ignored.
struct Target {
    const ValueReader* reader = nullptr;
    void* value = nullptr;
};

/// Each member function except `expected` takes the address of a value of the reader's type. Those
/// that return `bool` take a token; they return false when it does not fit the type, and the
/// decoder reports the mismatch.
class ValueReader {
public:
    /// What the type accepts, in the words of an error message: "text", "an object".
    virtual std::string_view expected() const = 0;

    /// The value that the next tokens fill: for an optional, the value inside it.
    virtual Target open(void* value) const { return {this, value}; }
    /// Called with the value that was passed to `open`, when that is complete. When `open` returned
    /// another reader and the value is an object or array, that reader's `close` is called first,
    /// with the value that `open` returned. `text` is the JSON text of an object or array, and
    /// empty for any other value.
    virtual void close(void*, std::string_view text, InternPool&) const { static_cast<void>(text); }
    /// Called where an object or array begins, before `open`. When `text` begins with a value that
    /// the pool knows, sets that value and returns the length of its text, which is then not
    /// parsed; otherwise returns 0.
    virtual std::size_t recall(void*, std::string_view text, InternPool&) const {
        static_cast<void>(text);
        return 0;
    }
    /// Resets the value to its default, for a key that occurs twice: the last occurrence counts.
    virtual void reset(void* value) const = 0;

    virtual bool null(void*) const { return false; }
    virtual bool boolean(void*, bool) const { return false; }
    virtual bool integer(void*, std::int64_t) const { return false; }
    virtual bool real(void*, double) const { return false; }
    virtual bool text(void*, const std::string&) const { return false; }

    virtual bool beginObject(void*) const { return false; }
    /// `seen` is 0 when the object begins; the reader marks in it which keys have occurred.
    virtual Target member(void*, std::string_view, std::uint64_t& seen) const {
        static_cast<void>(seen);
        return {};
    }
    virtual void endObject(void*, std::uint64_t seen) const { static_cast<void>(seen); }

    virtual bool beginArray(void*) const { return false; }
    virtual Target element(void*) const { return {}; }

protected:
    // Trivial, so that the readers are never destroyed: a thread that hangs in the system may still
    // decode while the program ends.
    ~ValueReader() = default;
};

template <class T>
const ValueReader& readerOf();

namespace detail {

template <class T>
class Reader;

/// Base of every reader of a `T`: converts the address back to the value.
template <class T>
class TypedReader : public ValueReader {
public:
    void reset(void* value) const override { of(value) = T{}; }

protected:
    ~TypedReader() = default;
    static T& of(void* value) { return *static_cast<T*>(value); }
};

template <>
class Reader<std::string> final : public TypedReader<std::string> {
public:
    std::string_view expected() const override { return "text"; }
    bool text(void* value, const std::string& text) const override {
        of(value) = text;
        return true;
    }
};

template <>
class Reader<bool> final : public TypedReader<bool> {
public:
    std::string_view expected() const override { return "true or false"; }
    bool boolean(void* value, bool flag) const override {
        of(value) = flag;
        return true;
    }
};

template <>
class Reader<std::int64_t> final : public TypedReader<std::int64_t> {
public:
    std::string_view expected() const override { return "a whole number of 64 bits"; }
    bool integer(void* value, std::int64_t number) const override {
        of(value) = number;
        return true;
    }
};

template <>
class Reader<double> final : public TypedReader<double> {
public:
    std::string_view expected() const override { return "a number"; }
    bool integer(void* value, std::int64_t number) const override {
        return real(value, static_cast<double>(number));
    }
    bool real(void* value, double number) const override {
        of(value) = number;
        return true;
    }
};

template <>
class Reader<Date> final : public TypedReader<Date> {
public:
    std::string_view expected() const override { return "a date in seconds since 2001"; }
    bool integer(void* value, std::int64_t number) const override {
        return real(value, static_cast<double>(number));
    }
    bool real(void* value, double number) const override {
        of(value) = Date{number};
        return true;
    }
};

template <>
class Reader<Uuid> final : public TypedReader<Uuid> {
public:
    std::string_view expected() const override { return "a UUID"; }
    bool text(void* value, const std::string& text) const override {
        const auto parsed = Uuid::parse(text);
        if (parsed)
            of(value) = *parsed;
        return parsed.has_value();
    }
};

template <>
class Reader<Data> final : public TypedReader<Data> {
public:
    std::string_view expected() const override { return "base64 data"; }
    bool text(void* value, const std::string& text) const override {
        auto bytes = base64Decoded(text);
        if (bytes)
            of(value).bytes = std::move(*bytes);
        return bytes.has_value();
    }
};

template <TextEnumeration E>
class Reader<E> final : public TypedReader<E> {
public:
    std::string_view expected() const override { return "one of the known texts"; }
    bool text(void* value, const std::string& text) const override {
        const auto known = fromRawValue<E>(text);
        if (!known)
            throwUnknownValue(text);
        this->of(value) = *known;
        return true;
    }
};

template <class T>
class Reader<std::optional<T>> final : public TypedReader<std::optional<T>> {
public:
    std::string_view expected() const override { return readerOf<T>().expected(); }
    bool null(void* value) const override {
        this->of(value).reset();
        return true;
    }
    Target open(void* value) const override {
        return readerOf<T>().open(&this->of(value).emplace());
    }
};

/// `Box` is `Shared` or `OptionalShared`: the value is filled before anything else shares it.
template <template <class> class Box, class T>
class BoxReader : public TypedReader<Box<T>> {
public:
    std::string_view expected() const override { return readerOf<T>().expected(); }
    Target open(void* value) const override {
        auto fresh = std::make_shared<T>();
        T* inner = fresh.get();
        if constexpr (std::is_same_v<Box<T>, Shared<T>> && Repeating<T>)
            forEachRepeated<T>([&](const auto& field) {
                inner->*field.member = (*this->of(value)).*field.member;
            });
        this->of(value) = Box<T>(std::shared_ptr<const T>(std::move(fresh)));
        return readerOf<T>().open(inner);
    }
    void close(void* value, std::string_view text, InternPool& pool) const override {
        if constexpr (Recurring<T>)
            pool.unify(this->of(value), text);
    }
    std::size_t recall(void* value, std::string_view text, InternPool& pool) const override {
        if constexpr (Recurring<T>) {
            static_assert(!Repeating<T>, "the text of such a record leaves out the members that "
                                         "equal those of the record before, so records that differ "
                                         "may have the same text");
            auto recalled = pool.recall<T>(text);
            if (recalled.value)
                this->of(value) = Box<T>(std::move(recalled.value));
            return recalled.length;
        }
        return 0;
    }

protected:
    ~BoxReader() = default;
};

template <class T>
class Reader<Shared<T>> final : public BoxReader<Shared, T> {};

template <class T>
class Reader<OptionalShared<T>> final : public BoxReader<OptionalShared, T> {
public:
    bool null(void* value) const override {
        this->of(value) = {};
        return true;
    }
};

template <class T>
inline constexpr bool isRepeating = false;
template <Repeating T>
inline constexpr bool isRepeating<Shared<T>> = true;

template <class T>
class Reader<std::vector<T>> final : public TypedReader<std::vector<T>> {
public:
    std::string_view expected() const override { return "an array"; }
    bool beginArray(void*) const override { return true; }
    Target element(void* value) const override {
        auto& values = this->of(value);
        if constexpr (isRepeating<T>)
            // Reading starts from a copy of the record before, because the document leaves out what
            // is equal in both.
            if (!values.empty())
                return {&readerOf<T>(), &values.emplace_back(T(values.back()))};
        return {&readerOf<T>(), &values.emplace_back()};
    }
    void close(void* value, std::string_view, InternPool&) const override {
        this->of(value).shrink_to_fit();
    }
};

template <class T>
class Reader<std::map<std::string, T>> final : public TypedReader<std::map<std::string, T>> {
public:
    std::string_view expected() const override { return "an object"; }
    bool beginObject(void*) const override { return true; }
    Target member(void* value, std::string_view key, std::uint64_t&) const override {
        auto& map = this->of(value);
        const auto known = map.size();
        const auto place = map.try_emplace(map.end(), std::string(key));
        if (map.size() == known)
            readerOf<T>().reset(&place->second);
        return {&readerOf<T>(), &place->second};
    }
};

/// Sets hold only texts and enumerations, so an element is one token. Duplicates are dropped.
template <class T>
class SetElementReader final : public TypedReader<std::set<T>> {
public:
    std::string_view expected() const override { return readerOf<T>().expected(); }
    bool text(void* value, const std::string& text) const override {
        T element{};
        if (!readerOf<T>().text(&element, text))
            return false;
        this->of(value).insert(std::move(element));
        return true;
    }
};

template <class T>
class Reader<std::set<T>> final : public TypedReader<std::set<T>> {
public:
    std::string_view expected() const override { return "an array"; }
    bool beginArray(void*) const override { return true; }
    Target element(void* value) const override {
        static constexpr SetElementReader<T> reader;
        return {&reader, value};
    }
};

/// The name, reader and address of one member, in the table in which the decoder looks it up.
template <class Record>
struct MemberEntry {
    std::string_view name;
    const ValueReader& (*reader)();
    void* (*address)(Record&);
    bool required;
    /// Whether the member has a value from the record before.
    bool (*isRepeated)(const Record&);
};

template <class T>
inline constexpr bool isOptional = false;
template <class T>
inline constexpr bool isOptional<std::optional<T>> = true;
template <class T>
inline constexpr bool isOptional<OptionalShared<T>> = true;

template <class Record>
constexpr auto memberTable() {
    constexpr auto fields = fieldsOf<Record>();
    return [&]<std::size_t... I>(std::index_sequence<I...>) {
        return std::array<MemberEntry<Record>, sizeof...(I)>{[]() -> MemberEntry<Record> {
            constexpr auto field = std::get<I>(Record::fields());
            using Member = std::remove_cvref_t<decltype(std::declval<Record&>().*field.member)>;
            return {field.name, &readerOf<Member>,
                    [](Record& record) -> void* {
                        return &(record.*std::get<I>(Record::fields()).member);
                    },
                    !isOptional<Member>,
                    [](const Record& record) {
                        if constexpr (isShared<Member>)
                            return std::get<I>(Record::fields()).repeats
                                   && !(record.*std::get<I>(Record::fields()).member).isDefault();
                        return false;
                    }};
        }()...};
    }(std::make_index_sequence<std::tuple_size_v<decltype(fields)>>());
}

template <Described Record>
class Reader<Record> final : public TypedReader<Record> {
    static constexpr auto table = memberTable<Record>();
    static_assert(table.size() < 64, "`seen` has one bit for each member");

public:
    std::string_view expected() const override { return "an object"; }
    bool beginObject(void*) const override { return true; }

    Target member(void* value, std::string_view key, std::uint64_t& seen) const override {
        // Stored documents have the keys in declared order, so the key after the last one is tried
        // first.
        const auto start = static_cast<std::size_t>(std::bit_width(seen));
        for (std::size_t k = 0; k < table.size(); ++k) {
            const std::size_t index =
                start + k < table.size() ? start + k : start + k - table.size();
            const auto& entry = table[index];
            if (entry.name != key)
                continue;
            const Target target{&entry.reader(), entry.address(this->of(value))};
            const std::uint64_t bit = std::uint64_t{1} << index;
            if (seen & bit)
                target.reader->reset(target.value);
            seen |= bit;
            return target;
        }
        return {};
    }

    void endObject(void* value, std::uint64_t seen) const override {
        for (std::size_t index = 0; index < table.size(); ++index)
            if (table[index].required && !(seen >> index & 1)
                && !table[index].isRepeated(this->of(value)))
                throw ValueError("the required key \"" + std::string(table[index].name)
                                 + "\" is missing");
    }
};

template <class... Cases>
class Reader<std::variant<Cases...>> final : public TypedReader<std::variant<Cases...>> {
    using Variant = std::variant<Cases...>;

public:
    std::string_view expected() const override { return "an object with one key"; }
    bool beginObject(void*) const override { return true; }
    Target member(void* value, std::string_view key, std::uint64_t& seen) const override {
        Target target;
        const auto select = [&]<class Case>(std::type_identity<Case>) {
            if (key != Case::tag)
                return;
            ++seen;
            target = {&readerOf<Case>(), &this->of(value).template emplace<Case>()};
        };
        (select(std::type_identity<Cases>{}), ...);
        return target;
    }
    void endObject(void*, std::uint64_t seen) const override {
        if (seen != 1)
            throw ValueError("Invalid number of keys found, expected one.");
    }
};

} // namespace detail

template <class T>
const ValueReader& readerOf() {
    static constexpr detail::Reader<T> reader;
    return reader;
}

} // namespace tidemark::json
