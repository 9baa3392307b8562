#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace tidemark {

/// A source of records, or a way to show something (`notifications`, `windows`), that settings
/// control. A system or a build may lack it.
enum class SettingSource {
    formulas,
    diagnosticReports,
    network,
    wifiNames,
    bluetooth,
    environment,
    battery,
    recentFiles,
    applicationLaunches,
    clipboard,
    notifications,
    windows,
};

/// The sources that this program has on this system. The object is created where the sources are
/// connected, so that a setting does not offer a source that does not exist.
class SettingSources {
public:
    /// Sources that are not in `available` are missing. `why` has the reason as a sentence; without
    /// one, `absence` says that this release has no such source on this system.
    explicit SettingSources(std::set<SettingSource> available,
                            std::map<SettingSource, std::string> why = {})
        : available(std::move(available)), why(std::move(why)) {}

    /// Why a setting has no effect here, as a sentence; absent when it has one.
    std::optional<std::string> absence(std::string_view key) const;

private:
    std::set<SettingSource> available;
    std::map<SettingSource, std::string> why;
};

} // namespace tidemark
