#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace tidemark {

/// What settings switch or narrow, and what a system or a build may lack.
enum class SettingSource {
    formulas,
    diagnosticReports,
    network,
    bluetooth,
    environment,
    battery,
    recentFiles,
    applicationLaunches,
    clipboard,
    windows,
};

/// The sources that this program has on this system. Whoever puts the program together fills it
/// in, from what was really connected: a setting must not claim a source that is not there.
class SettingSources {
public:
    /// All but `present` are missing; `reasons` says why, as a sentence, where there is more to say
    /// than that this release has none.
    explicit SettingSources(std::set<SettingSource> present,
                            std::map<SettingSource, std::string> reasons = {})
        : available(std::move(present)), why(std::move(reasons)) {}

    /// Why a setting does nothing here, as a sentence; absent when it does something.
    std::optional<std::string> absence(std::string_view key) const;

private:
    std::set<SettingSource> available;
    std::map<SettingSource, std::string> why;
};

} // namespace tidemark
