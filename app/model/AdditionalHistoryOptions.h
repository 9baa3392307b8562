#pragma once

#include "app/preferences/PreferenceKeys.h"

#include <filesystem>
#include <vector>

namespace tidemark {

/// The additional sources that the user turned on.
struct AdditionalHistoryOptions {
    bool homebrew = false;
    bool diagnostics = false;
    std::vector<std::filesystem::path> files;

    bool isEmpty() const { return !homebrew && !diagnostics && files.empty(); }

    static AdditionalHistoryOptions stored(const Preferences& preferences) {
        const auto paths = read(preferences, preferenceKeys::configurationHistoryPaths);
        return {read(preferences, preferenceKeys::homebrewHistoryEnabled),
                read(preferences, preferenceKeys::diagnosticHistoryEnabled),
                {paths.begin(), paths.end()}};
    }
};

} // namespace tidemark
