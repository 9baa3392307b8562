#include "app/preferences/PreferenceKeys.h"

#include "core/base/Text.h"
#include "core/system/SystemFacts.h"

#include <algorithm>

namespace tidemark {

bool read(const Preferences& preferences, const SwitchKey& key) {
    return preferences.boolean(key.name).value_or(key.fallback);
}

std::int64_t read(const Preferences& preferences, const NumberKey& key) {
    return std::clamp(preferences.integer(key.name).value_or(key.fallback), key.least, key.most);
}

std::string read(const Preferences& preferences, const TextKey& key) {
    const auto fallback = key.systemFallback != nullptr ? key.systemFallback() : key.fallback;
    return preferences.text(key.name).value_or(std::string(fallback));
}

std::string read(const Preferences& preferences, const ChoiceKey& key) {
    auto stored = preferences.text(key.name);
    if (stored && !stored->empty() && *stored == key.alias.text)
        stored = key.alias.choice;
    const bool known =
        stored && std::ranges::find(key.choices, std::string_view(*stored)) != key.choices.end();
    if (known)
        return *stored;
    return std::string(preferences.isLost() && !key.whenLost.empty() ? key.whenLost : key.fallback);
}

std::vector<std::string> read(const Preferences& preferences, const PathsKey& key) {
    if (auto stored = preferences.texts(key.name))
        return *std::move(stored);
    std::vector<std::string> paths;
    for (const auto path : key.fallback)
        paths.push_back(textFromBytes((SystemFacts::homeDirectory() / path).native()));
    return paths;
}

CaptureSchedule captureSchedule(const Preferences& preferences) {
    const auto text = read(preferences, preferenceKeys::captureSchedule);
    return json::fromRawValue<CaptureSchedule>(text).value_or(CaptureSchedule::halfHourly);
}

} // namespace tidemark
