#pragma once

#include "core/base/JsonEncoder.h"

#include <limits>

#include <rapidcheck.h>

/// Fills any stored record by its list of fields.
namespace tidemark::test {

/// Where the values come from. Not a template parameter, so that `fill` is compiled only once for
/// each type of record.
class ValueSource {
public:
    virtual ~ValueSource() = default;
    /// Whether an optional has a value.
    virtual bool present() = 0;
    virtual bool flag() = 0;
    /// The number of elements of a collection.
    virtual std::size_t count() = 0;
    /// An index below `size`.
    virtual std::size_t choice(std::size_t size) = 0;
    virtual std::int64_t integer() = 0;
    virtual double real() = 0;
    virtual std::string text() = 0;
    virtual Uuid uuid() = 0;
};

/// Every optional is present, every collection has one element, every text is the same.
class FullSample final : public ValueSource {
public:
    bool present() override { return true; }
    bool flag() override { return true; }
    std::size_t count() override { return 1; }
    std::size_t choice(std::size_t) override { return 0; }
    std::int64_t integer() override { return 7; }
    double real() override { return 0.5; }
    std::string text() override { return "text"; }
    Uuid uuid() override { return *Uuid::parse("00000000-0000-4000-8000-00000000000A"); }
};

/// Random values that a document can hold, including the extremes.
class Drawn final : public ValueSource {
public:
    bool present() override { return *rc::gen::arbitrary<bool>(); }
    bool flag() override { return *rc::gen::arbitrary<bool>(); }
    std::size_t count() override { return *rc::gen::inRange<std::size_t>(0, 3); }
    std::size_t choice(std::size_t size) override {
        return *rc::gen::inRange<std::size_t>(0, size);
    }
    std::int64_t integer() override {
        return *rc::gen::oneOf(rc::gen::arbitrary<std::int64_t>(),
                               rc::gen::element(std::numeric_limits<std::int64_t>::min(),
                                                std::numeric_limits<std::int64_t>::max()));
    }
    double real() override {
        return *rc::gen::oneOf(rc::gen::arbitrary<double>(),
                               rc::gen::element(-0.0, 5e-324, 1e308, 1e17, 0.1 + 0.2));
    }
    std::string text() override {
        return *rc::gen::element<std::string>("", "plain", "\"quoted\\\"", "line\nfeed\t",
                                              std::string("nul\0", 4), "é 😀 \u2028", "\x7F");
    }
    Uuid uuid() override { return Uuid::random(); }
};

template <class>
inline constexpr bool isVariant = false;
template <class... Cases>
inline constexpr bool isVariant<std::variant<Cases...>> = true;

template <class T>
void fill(ValueSource& source, T& value);

template <class T>
void fill(ValueSource& source, std::optional<T>& value) {
    if (source.present())
        fill(source, value.emplace());
}
template <class T>
void fill(ValueSource& source, Shared<T>& value) {
    T inner{};
    fill(source, inner);
    value.emplace(std::move(inner));
}
template <class T>
void fill(ValueSource& source, OptionalShared<T>& value) {
    if (!source.present())
        return;
    T inner{};
    fill(source, inner);
    value.emplace(std::move(inner));
}
template <class T>
void fill(ValueSource& source, std::vector<T>& values) {
    for (std::size_t left = source.count(); left > 0; --left)
        fill(source, values.emplace_back());
}
template <class T>
void fill(ValueSource& source, std::set<T>& values) {
    for (std::size_t left = source.count(); left > 0; --left) {
        T value{};
        fill(source, value);
        values.insert(value);
    }
}
template <class T>
void fill(ValueSource& source, std::map<std::string, T>& values) {
    for (std::size_t left = source.count(); left > 0; --left)
        fill(source, values[source.text()]);
}
template <class... Cases>
void fillCase(ValueSource& source, std::variant<Cases...>& value) {
    std::size_t index = source.choice(sizeof...(Cases));
    const auto fillIf = [&]<class Case>(std::type_identity<Case>) {
        if (index-- == 0)
            fill(source, value.template emplace<Case>());
    };
    (fillIf(std::type_identity<Cases>{}), ...);
}

template <class T>
void fill(ValueSource& source, T& value) {
    if constexpr (std::is_same_v<T, std::string>)
        value = source.text();
    else if constexpr (std::is_same_v<T, bool>)
        value = source.flag();
    else if constexpr (std::is_same_v<T, std::int64_t>)
        value = source.integer();
    else if constexpr (std::is_same_v<T, double>)
        value = source.real();
    else if constexpr (std::is_same_v<T, Date>)
        value = Date{source.real()};
    else if constexpr (std::is_same_v<T, Uuid>)
        value = source.uuid();
    else if constexpr (std::is_same_v<T, Data>)
        value = Data{source.text()};
    else if constexpr (json::TextEnumeration<T>)
        value = json::rawValues<T>[source.choice(json::rawValues<T>.size())].value;
    else if constexpr (isVariant<T>)
        fillCase(source, value);
    else
        std::apply([&](const auto&... field) { (fill(source, value.*field.member), ...); },
                   T::fields());
}

template <class T>
T fullSample() {
    FullSample source;
    T value{};
    fill(source, value);
    return value;
}

template <class T>
T drawn() {
    Drawn source;
    T value{};
    fill(source, value);
    return value;
}

} // namespace tidemark::test
