#pragma once

#include "app/preferences/Preferences.h"

namespace tidemark::test {

/// Preferences for tests that are not about the file.
class MemoryPreferences final : public Preferences {
public:
    std::optional<bool> boolean(std::string_view key) const override { return read<bool>(key); }
    std::optional<std::int64_t> integer(std::string_view key) const override {
        return read<std::int64_t>(key);
    }
    std::optional<std::string> text(std::string_view key) const override {
        return read<std::string>(key);
    }
    std::optional<std::vector<std::string>> texts(std::string_view key) const override {
        return read<std::vector<std::string>>(key);
    }
    std::optional<Data> data(std::string_view key) const override { return read<Data>(key); }
    std::optional<std::map<std::string, Data>> dataTable(std::string_view key) const override {
        return read<std::map<std::string, Data>>(key);
    }

    bool isReadOnly() const override { return readOnly; }
    std::optional<std::string> problem() const override {
        return refuses ? std::optional<std::string>("The disk is full.") : std::nullopt;
    }
    bool isStored() const override { return !refuses; }

    int changes = 0;
    /// Nothing can be stored.
    bool refuses = false;
    bool readOnly = false;

private:
    bool storeOrKeep(std::string_view key, PreferenceValue value) override {
        ++changes;
        values.insert_or_assign(std::string(key), std::move(value));
        return !refuses;
    }
    bool removeOrForget(std::string_view key) override {
        ++changes;
        values.erase(std::string(key));
        return !refuses;
    }
    bool storeOrRefuse(std::string_view key, PreferenceValue value) override {
        ++changes;
        if (!refuses)
            values.insert_or_assign(std::string(key), std::move(value));
        return !refuses;
    }

    template <class T>
    std::optional<T> read(std::string_view key) const {
        const auto found = values.find(key);
        const T* value = found == values.end() ? nullptr : std::get_if<T>(&found->second);
        return value ? std::optional<T>(*value) : std::nullopt;
    }

    std::map<std::string, PreferenceValue, std::less<>> values;
};

} // namespace tidemark::test
