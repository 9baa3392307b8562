#include "recorder/SettingCommands.h"

#include "app/preferences/PreferenceKeys.h"
#include "core/base/Error.h"
#include "core/base/JsonEncoder.h"
#include "core/base/Text.h"

#include <algorithm>
#include <charconv>

namespace tidemark::settingCommands {

namespace {

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};

std::string_view nameOf(const AnyPreferenceKey& key) {
    return std::visit([](const auto& known) { return known.name; }, key);
}

bool isForUser(const AnyPreferenceKey& key) {
    return std::visit([](const auto& known) { return !known.isInternal; }, key);
}

const AnyPreferenceKey& find(const std::string& name) {
    const auto* key =
        std::ranges::find_if(preferenceKeys::all, [&](const AnyPreferenceKey& candidate) {
            return nameOf(candidate) == name && isForUser(candidate);
        });
    if (key == preferenceKeys::all.end())
        throw Error("There is no setting \"" + name + "\"; tidemark settings lists them.");
    return *key;
}

std::string valueOf(const Preferences& preferences, const AnyPreferenceKey& key) {
    return std::visit(
        Overloaded{
            [&](const SwitchKey& k) -> std::string { return read(preferences, k) ? "on" : "off"; },
            [&](const NumberKey& k) { return std::to_string(read(preferences, k)); },
            [&](const TextKey& k) { return read(preferences, k); },
            [&](const ChoiceKey& k) { return read(preferences, k); },
            [&](const PathsKey& k) { return joined(read(preferences, k), ":"); },
            [](const auto&) { return std::string(); },
        },
        key);
}

/// One setting as it is printed.
struct Setting {
    std::string key;
    std::string value;
    std::string meaning;
    /// Why it has no effect here, if so.
    std::optional<std::string> notAvailable;

    static constexpr auto fields() {
        return std::tuple{
            Field{"key", &Setting::key, Shown},
            Field{"value", &Setting::value, Private},
            Field{"meaning", &Setting::meaning, Shown},
            Field{"notAvailable", &Setting::notAvailable, Shown},
        };
    }
};

struct Report {
    std::vector<Setting> settings;
    std::vector<std::string> suggestedConfigurationFiles;
    /// A problem with the stored settings.
    std::optional<std::string> problem;

    static constexpr auto fields() {
        return std::tuple{
            Field{"settings", &Report::settings},
            Field{"suggestedConfigurationFiles", &Report::suggestedConfigurationFiles, Private},
            Field{"problem", &Report::problem, Private}};
    }
};

Setting settingOf(const Preferences& preferences, const SettingSources& sources,
                  const AnyPreferenceKey& key) {
    const auto meaning = std::visit([](const auto& known) { return known.meaning; }, key);
    return {std::string(nameOf(key)), valueOf(preferences, key), std::string(meaning),
            sources.absence(nameOf(key))};
}

bool switchValue(const std::string& text) {
    if (text == "on" || text == "true")
        return true;
    if (text == "off" || text == "false")
        return false;
    throw Error("\"" + text + "\" is neither on nor off.");
}

std::int64_t numberValue(const std::string& text, const NumberKey& key) {
    std::int64_t value = 0;
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end || value < key.least || value > key.most)
        throw Error("\"" + text + "\" is no whole number from " + std::to_string(key.least) + " to "
                    + std::to_string(key.most) + ".");
    return value;
}

std::string choiceValue(const std::string& text, const ChoiceKey& key) {
    if (std::ranges::find(key.choices, text) != key.choices.end())
        return text;
    throw Error("\"" + text + "\" is none of: " + joined(key.choices, ", ") + ".");
}

/// Parses absolute paths separated by ":"; the empty text is an empty list.
std::vector<std::string> pathsValue(const std::string& text) {
    std::vector<std::string> paths;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(':', start), text.size());
        paths.push_back(text.substr(start, end - start));
        if (!paths.back().starts_with('/'))
            throw Error("\"" + paths.back() + "\" is no absolute path.");
        start = end + 1;
    }
    return paths;
}

} // namespace

std::string list(const Preferences& preferences, const SettingSources& sources,
                 const std::vector<std::filesystem::path>& suggestions, bool asJson) {
    Report report{{}, {}, preferences.problem()};
    for (const auto& file : suggestions)
        report.suggestedConfigurationFiles.push_back(textFromBytes(file.native()));
    for (const auto& key : preferenceKeys::all)
        if (isForUser(key))
            report.settings.push_back(settingOf(preferences, sources, key));
    if (asJson)
        return json::encoded(report) + "\n";
    std::string out;
    for (const auto& setting : report.settings) {
        const std::string assignment = setting.key + " = " + oneLine(setting.value);
        const std::size_t gap = assignment.size() < 44 ? 44 - assignment.size() : 2;
        out += assignment + std::string(gap, ' ') + setting.meaning;
        if (setting.notAvailable)
            out += " (not available here: " + oneLine(*setting.notAvailable) + ")";
        out += "\n";
    }
    if (!report.suggestedConfigurationFiles.empty())
        out += "Files that " + std::string(preferenceKeys::configurationHistoryPaths.name)
               + " may name: " + oneLine(joined(report.suggestedConfigurationFiles, ", ")) + "\n";
    return report.problem ? out + oneLine(*report.problem) + "\n" : out;
}

std::string get(const Preferences& preferences, const SettingSources& sources,
                const std::string& key, bool asJson) {
    const Report report{{settingOf(preferences, sources, find(key))}, {}, preferences.problem()};
    if (asJson)
        return json::encoded(report) + "\n";
    const auto& setting = report.settings.front();
    std::string out = oneLine(setting.value) + "\n";
    if (setting.notAvailable)
        out += "Not available here: " + oneLine(*setting.notAvailable) + "\n";
    return report.problem ? out + oneLine(*report.problem) + "\n" : out;
}

void set(Preferences& preferences, const std::string& key, const std::string& text) {
    const auto value =
        std::visit(Overloaded{
                       [&](const SwitchKey&) -> PreferenceValue { return switchValue(text); },
                       [&](const NumberKey& k) -> PreferenceValue { return numberValue(text, k); },
                       [&](const TextKey&) -> PreferenceValue { return text; },
                       [&](const ChoiceKey& k) -> PreferenceValue { return choiceValue(text, k); },
                       [&](const PathsKey&) -> PreferenceValue { return pathsValue(text); },
                       [](const auto&) -> PreferenceValue {
                           throw Error("This setting can't be set by hand.");
                       },
                   },
                   find(key));
    if (!preferences.set(key, value))
        throw Error(preferences.problem().value_or("The setting could not be stored."));
}

} // namespace tidemark::settingCommands
