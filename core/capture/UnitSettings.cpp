#include "core/capture/UnitSettings.h"

#include "core/base/Text.h"
#include "core/capture/CommandText.h"
#include "core/capture/UnitFolders.h"
#include "core/capture/UnitName.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace tidemark {

namespace {

enum class Form {
    /// Each line of the setting adds a text.
    list,
    /// Only the last line of the setting takes effect.
    single,
    /// Like `single`, with true or false as its value; false is the default.
    flag,
    /// Like `single`, with the path of a file after "file:", "append:" or "truncate:". Other values
    /// name no file and count as the default.
    outputFile,
};

/// A setting that is compared. A name that ends with "*" matches all names with that beginning.
struct Setting {
    std::string_view name;
    /// The definition key that gets its text; empty for settings that are only looked up by name.
    std::string_view definitionKey;
    Form form = Form::single;
    /// An empty value of a list also clears all lists with the same number here, other than 0
    /// (systemd.timer(5)).
    int clearedTogether = 0;
};

constexpr int ofTimer = 1;
constexpr int ofSocket = 2;
constexpr int ofPath = 3;

constexpr auto watched = std::to_array<Setting>({
    {"Exec*", "ProgramArguments", Form::list},
    {"Restart", ""},
    {"RestartSec", ""},
    {"Unit", ""},
    {"Service", ""},
    {"OnUnitActiveSec", "", Form::list, ofTimer},
    {"OnUnitInactiveSec", "", Form::list, ofTimer},
    {"OnCalendar", "StartCalendarInterval", Form::list, ofTimer},
    {"OnBootSec", "StartCalendarInterval", Form::list, ofTimer},
    {"OnStartupSec", "StartCalendarInterval", Form::list, ofTimer},
    {"OnActiveSec", "StartCalendarInterval", Form::list, ofTimer},
    {"PathExists", "WatchPaths", Form::list, ofPath},
    {"PathExistsGlob", "WatchPaths", Form::list, ofPath},
    {"PathChanged", "WatchPaths", Form::list, ofPath},
    {"PathModified", "WatchPaths", Form::list, ofPath},
    {"DirectoryNotEmpty", "QueueDirectories", Form::list, ofPath},
    {"Environment", "EnvironmentVariables", Form::list},
    {"EnvironmentFile", "EnvironmentVariables", Form::list},
    {"PassEnvironment", "EnvironmentVariables", Form::list},
    {"UnsetEnvironment", "EnvironmentVariables", Form::list},
    {"SetCredential*", "EnvironmentVariables", Form::list},
    {"LoadCredential*", "EnvironmentVariables", Form::list},
    {"WorkingDirectory", "WorkingDirectory"},
    {"RootDirectory", "WorkingDirectory"},
    {"RootImage", "WorkingDirectory"},
    {"User", "UserName"},
    {"DynamicUser", "UserName", Form::flag},
    {"Group", "GroupName"},
    {"SupplementaryGroups", "GroupName", Form::list},
    {"Listen*", "Sockets", Form::list, ofSocket},
    {"Accept", "Sockets", Form::flag},
    {"BusName", "MachServices"},
    {"StandardOutput", "StandardOutPath", Form::outputFile},
    {"StandardError", "StandardErrorPath", Form::outputFile},
});

const Setting* settingOf(std::string_view name) {
    const auto found = std::ranges::find_if(watched, [&](const Setting& setting) {
        return setting.name.ends_with('*')
                   ? name.starts_with(setting.name.substr(0, setting.name.size() - 1))
                   : name == setting.name;
    });
    return found == watched.end() ? nullptr : &*found;
}

/// The group "Service" of the units ".service", and so on.
std::string groupOf(std::string_view unitName) {
    std::string group(UnitName::suffix(unitName));
    if (group.size() < 2)
        return {};
    group.erase(0, 1);
    group.front() = static_cast<char>(group.front() - 'a' + 'A');
    return group;
}

bool isTrue(std::string_view value) {
    const std::string text = asciiLowercased(value);
    return text == "1" || text == "yes" || text == "y" || text == "true" || text == "t"
           || text == "on";
}

bool isOutputFile(std::string_view value) {
    return value.starts_with("file:") || value.starts_with("append:")
           || value.starts_with("truncate:");
}

/// The value in the form that is compared; empty if it means the default.
std::string normalised(const std::string& value, Form form) {
    switch (form) {
    case Form::list:
        return CommandText::withSingleBlanks(value, CommandText::Quoting::unit);
    case Form::flag:
        return isTrue(value) ? "yes" : "";
    case Form::outputFile:
        return isOutputFile(value) ? value : "";
    case Form::single:
        break;
    }
    return value;
}

} // namespace

UnitSettings::UnitSettings(std::string_view unitName) : group(groupOf(unitName)) {}

void UnitSettings::read(const KeyFile& file) {
    for (const auto& entry : file.entries()) {
        const Setting* setting = entry.group == group ? settingOf(entry.key) : nullptr;
        if (!setting)
            continue;
        const std::string value = normalised(entry.text(), setting->form);
        if (!value.empty() && setting->form == Form::list) {
            settings[std::string(entry.key)].push_back(value);
        } else if (!value.empty()) {
            settings[std::string(entry.key)] = {value};
        } else {
            std::erase_if(settings, [&](const auto& each) {
                const Setting* other = settingOf(each.first);
                return each.first == entry.key
                       || (setting->clearedTogether != 0
                           && other->clearedTogether == setting->clearedTogether);
            });
        }
    }
}

std::string UnitSettings::value(std::string_view name) const {
    const auto found = settings.find(name);
    return found == settings.end() ? std::string() : found->second.back();
}

std::vector<std::string> UnitSettings::values(std::string_view name) const {
    const auto found = settings.find(name);
    return found == settings.end() ? std::vector<std::string>() : found->second;
}

std::map<std::string_view, std::vector<std::string>> UnitSettings::byDefinitionKey() const {
    std::map<std::string_view, std::vector<std::string>> texts;
    for (const auto& [name, values] : settings)
        if (const Setting* setting = settingOf(name); !setting->definitionKey.empty())
            for (const auto& value : values)
                texts[setting->definitionKey].push_back(
                    std::string(name).append("=").append(value));
    return texts;
}

} // namespace tidemark
