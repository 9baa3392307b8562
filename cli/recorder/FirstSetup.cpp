#include "cli/recorder/FirstSetup.h"

#include "app/preferences/PreferenceKeys.h"
#include "core/base/Text.h"

#include <cstdio>
#include <iostream>

#include <unistd.h>

namespace tidemark {

namespace {

constexpr const char* noTerminal =
    "No folders have been chosen yet: captures wait for tidemark folders, or start again with "
    "--setup recommended.";

void offer(const std::vector<RecommendedFolder>& folders) {
    std::fputs("Tidemark can monitor these folders:\n", stderr);
    for (const auto& folder : folders) {
        const auto failure = directoryAccessFailure(folder.url);
        std::fprintf(stderr, "  %s  %s: %s\n", failure ? " " : "✓", folder.title.c_str(),
                     failure ? failure->c_str()
                             : oneLine(textFromBytes(folder.url.native())).c_str());
    }
    std::fputs("Monitor all that can be read? [Y/n] ", stderr);
}

} // namespace

std::string firstSetup(Recorder& recorder) {
    if (read(recorder.preferences(), preference::folderSetupCompleted))
        return {};
    if (::isatty(STDIN_FILENO) == 0 || ::isatty(STDERR_FILENO) == 0) {
        std::fprintf(stderr, "%s\n", noTerminal);
        return {};
    }
    offer(recorder.model().folderAccess().recommendedFolders());
    std::string answer;
    if (!std::getline(std::cin, answer))
        return {};
    return answer.empty() || answer.starts_with('y') || answer.starts_with('Y') ? "recommended"
                                                                                : "none";
}

} // namespace tidemark
