#include "app/preferences/SettingsDocument.h"

#include "core/base/Base64.h"

namespace tidemark {

namespace {

using Json = nlohmann::json;

/// Writing a document that is nested more deeply could overflow the stack.
constexpr int deepestNesting = 64;
constexpr const char* versionKey = "schemaVersion";

template <class T>
std::optional<T> converted(const Json& value);

template <>
std::optional<bool> converted(const Json& value) {
    return value.is_boolean() ? std::optional(value.get<bool>()) : std::nullopt;
}
template <>
std::optional<std::int64_t> converted(const Json& value) {
    if (!value.is_number_integer())
        return std::nullopt;
    if (value.is_number_unsigned() && value.get<std::uint64_t>() > INT64_MAX)
        return std::nullopt;
    return value.get<std::int64_t>();
}
template <>
std::optional<std::string> converted(const Json& value) {
    return value.is_string() ? std::optional(value.get<std::string>()) : std::nullopt;
}
template <>
std::optional<Data> converted(const Json& value) {
    const auto bytes = value.is_string() ? base64Decoded(value.get<std::string>()) : std::nullopt;
    return bytes ? std::optional(Data{*bytes}) : std::nullopt;
}
template <>
std::optional<std::vector<std::string>> converted(const Json& value) {
    if (!value.is_array())
        return std::nullopt;
    std::vector<std::string> texts;
    for (const auto& element : value) {
        if (!element.is_string())
            return std::nullopt;
        texts.push_back(element.get<std::string>());
    }
    return texts;
}
template <>
std::optional<std::map<std::string, Data>> converted(const Json& value) {
    if (!value.is_object())
        return std::nullopt;
    std::map<std::string, Data> table;
    for (const auto& [key, element] : value.items()) {
        auto data = converted<Data>(element);
        if (!data)
            return std::nullopt;
        table.emplace(key, *std::move(data));
    }
    return table;
}

Json stored(bool value) {
    return value;
}
Json stored(std::int64_t value) {
    return value;
}
Json stored(const std::string& value) {
    return value;
}
Json stored(const std::vector<std::string>& value) {
    return value;
}
Json stored(const Data& value) {
    return base64Encoded(value.bytes);
}
Json stored(const std::map<std::string, Data>& table) {
    Json object = Json::object();
    for (const auto& [key, data] : table)
        object[key] = stored(data);
    return object;
}

} // namespace

std::optional<SettingsDocument> SettingsDocument::parsed(std::string_view bytes) {
    bool tooDeep = false;
    const auto shallow = [&](int depth, Json::parse_event_t, Json&) {
        tooDeep = tooDeep || depth > deepestNesting;
        return !tooDeep;
    };
    SettingsDocument document;
    document.root = Json::parse(bytes, shallow, false);
    if (tooDeep || !document.root.is_object())
        return std::nullopt;
    return document;
}

std::string SettingsDocument::bytes() const {
    return root.dump(4, ' ', false, Json::error_handler_t::replace) + "\n";
}

/// Settings without a version count as those of version 1.
std::optional<std::string> SettingsDocument::foreignVersion() const {
    const auto found = root.find(versionKey);
    if (found == root.end() || *found == 1)
        return std::nullopt;
    return found->dump();
}

template <class T>
std::optional<T> SettingsDocument::value(std::string_view key) const {
    const auto found = root.find(key);
    return found == root.end() ? std::nullopt : converted<T>(*found);
}
template std::optional<bool> SettingsDocument::value(std::string_view) const;
template std::optional<std::int64_t> SettingsDocument::value(std::string_view) const;
template std::optional<std::string> SettingsDocument::value(std::string_view) const;
template std::optional<std::vector<std::string>> SettingsDocument::value(std::string_view) const;
template std::optional<Data> SettingsDocument::value(std::string_view) const;
template std::optional<std::map<std::string, Data>> SettingsDocument::value(std::string_view) const;

void SettingsDocument::set(std::string_view key, const PreferenceValue& value) {
    root[std::string(key)] = std::visit([](const auto& held) { return stored(held); }, value);
}

bool SettingsDocument::remove(std::string_view key) {
    return root.erase(std::string(key)) > 0;
}

} // namespace tidemark
