#include "core/capture/BackgroundDefinition.h"

#include "core/base/Base64.h"
#include "core/base/Digest.h"
#include "core/base/JsonWriter.h"
#include "core/base/Text.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace tidemark::BackgroundDefinition {

namespace {

using PropertyList::Array;
using PropertyList::Dictionary;
using PropertyList::Other;
using PropertyList::Value;

constexpr auto falseWhenMissing =
    std::to_array<std::string_view>({"RunAtLoad", "KeepAlive", "Disabled"});
constexpr auto shownNumbers =
    std::to_array<std::string_view>({"StartInterval", "ThrottleInterval"});

std::string answer(bool value) {
    return value ? "Yes" : "No";
}

std::string flagText(const Value* value) {
    const bool* flag = value ? value->as<bool>() : nullptr;
    return answer(flag && *flag);
}

std::string keepAliveText(const Value* value) {
    return value && value->as<Dictionary>() ? "Conditional" : flagText(value);
}

/// A number of seconds as text; absent when it is not a number, negative or not finite.
std::optional<std::string> amountText(const Value* value) {
    if (const auto* integer = value ? value->as<std::int64_t>() : nullptr)
        return *integer >= 0 ? std::optional(std::to_string(*integer)) : std::nullopt;
    const auto* real = value ? value->as<double>() : nullptr;
    if (!real || !std::isfinite(*real) || *real < 0)
        return std::nullopt;
    std::string text = shortestText(*real);
    if (text.ends_with(".0"))
        text.resize(text.size() - 2);
    return text;
}

/// Writes values in the canonical form that is digested: JSON with sorted keys.
struct Normaliser {
    json::JsonWriter& out;

    /// False for values that JSON can't represent; they are left out.
    static bool hasForm(const Value& value) {
        if (const double* real = value.as<double>())
            return std::isfinite(*real);
        if (const Date* date = value.as<Date>())
            return std::isfinite(date->secondsSince2001);
        return !value.as<Other>();
    }

    void write(const Value& value) { std::visit(*this, value.content); }

    void operator()(const Other&) {}
    void operator()(bool value) { out.boolean(value); }
    void operator()(std::int64_t value) { out.integer(value); }
    void operator()(double value) { out.real(value); }
    void operator()(const std::string& value) { out.text(value); }
    void operator()(const Data& value) {
        out.beginObject();
        out.key("data");
        out.text(base64Encoded(value.bytes));
        out.endObject();
    }
    void operator()(const Date& value) {
        out.beginObject();
        out.key("date");
        out.real(value.secondsSince2001);
        out.endObject();
    }
    void operator()(const Array& values) {
        out.beginArray();
        for (const auto& value : values)
            if (hasForm(value))
                write(value);
        out.endArray();
    }
    void operator()(const Dictionary& values) {
        out.beginObject();
        for (const auto& [key, value] : values) {
            if (!hasForm(value))
                continue;
            out.key(key);
            write(value);
        }
        out.endObject();
    }
};

std::string digested(const Value& value) {
    Sha256 digest;
    json::JsonWriter out([&](std::string_view piece) { digest.update(piece); });
    out.beginArray();
    Normaliser{out}.write(value);
    out.endArray();
    out.finish();
    return digest.finish();
}

std::string fingerprint(const Value& value) {
    // Most values are flags, so these two digests are computed only once. Never destroyed: another
    // thread may still use them when the process ends.
    static const std::string& ofTrue = *new std::string(digested({true}));
    static const std::string& ofFalse = *new std::string(digested({false}));
    const bool* flag = value.as<bool>();
    if (!flag)
        return digested(value);
    return *flag ? ofTrue : ofFalse;
}

} // namespace

std::map<std::string, std::string> safeSettings(const Dictionary& definition) {
    std::map<std::string, std::string> settings{
        {"RunAtLoad", flagText(PropertyList::find(definition, "RunAtLoad"))},
        {"Disabled", flagText(PropertyList::find(definition, "Disabled"))},
        {"KeepAlive", keepAliveText(PropertyList::find(definition, "KeepAlive"))},
    };
    for (const auto key : shownNumbers)
        if (auto text = amountText(PropertyList::find(definition, key)))
            settings.emplace(key, *std::move(text));
    return settings;
}

std::map<std::string, std::string> fingerprints(const Dictionary& definition) {
    const Value no{false};
    std::map<std::string, std::string> result;
    for (const auto key : keys) {
        const Value* value = PropertyList::find(definition, key);
        if (!value && std::ranges::find(falseWhenMissing, key) != falseWhenMissing.end())
            value = &no;
        if (value && Normaliser::hasForm(*value))
            result.emplace(key, fingerprint(*value));
    }
    return result;
}

Result item(const Dictionary& definition, std::string path, const std::string* program) {
    if (definition.empty())
        return std::unexpected(Failure::empty);
    const auto* label = PropertyList::find<std::string>(definition, "Label");
    if (!label || label->empty())
        return std::unexpected(Failure::unreadable);
    BackgroundItem item;
    item.identifier = *label;
    item.path = std::move(path);
    if (program)
        item.program = *program;
    item.safeSettings = safeSettings(definition);
    item.definitionFingerprints = fingerprints(definition);
    return item;
}

Result item(const Dictionary& definition, std::string path) {
    return item(definition, std::move(path),
                PropertyList::find<std::string>(definition, "Program"));
}

} // namespace tidemark::BackgroundDefinition
