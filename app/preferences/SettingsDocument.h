#pragma once

#include "app/preferences/Preferences.h"

#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace tidemark {

/// The settings as they are stored: a JSON object with one value per key. Data is base64 text.
/// Unknown keys are kept. This class only holds the settings; it does not read or write the file.
class SettingsDocument {
public:
    /// Absent when `bytes` are no JSON object, or one that is nested so deeply that it is damaged
    /// or hostile.
    static std::optional<SettingsDocument> parsed(std::string_view bytes);
    std::string bytes() const;

    /// The version of a document of another release, which may mean something else by the same
    /// keys; absent for one of this release.
    std::optional<std::string> foreignVersion() const;

    /// Absent when the key is missing or its value can't be read as `T`, an alternative of
    /// `PreferenceValue`.
    template <class T>
    std::optional<T> value(std::string_view key) const;
    void set(std::string_view key, const PreferenceValue& value);
    /// False when there is no such key.
    bool remove(std::string_view key);

    bool operator==(const SettingsDocument&) const = default;

private:
    nlohmann::json root = nlohmann::json::object();
};

} // namespace tidemark
