#include "cli/FirstSetup.h"

#include "app/preferences/PreferenceKeys.h"
#include "core/base/FileDescriptor.h"
#include "core/base/Text.h"
#include "recorder/FirstFolders.h"
#include "recorder/Recorder.h"

#include <QLoggingCategory>
#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <sstream>

#include <poll.h>
#include <unistd.h>

namespace tidemark {

namespace {

using Folders = std::vector<RecommendedFolder>;

constexpr const char* noTerminal = "No folders have been chosen yet. Captures begin once they are "
                                   "chosen with tidemark folders, or "
                                   "after a start with --setup recommended.";
constexpr const char* question =
    "Which of them shall be monitored? Numbers, all, or none [all that can be read]: ";
constexpr const char* again = "Please give numbers of the list, all, or none: ";

void offer(const Folders& folders) {
    std::fputs("Tidemark can monitor these folders:\n", stderr);
    int number = 0;
    for (const auto& folder : folders) {
        const auto failure = directoryAccessFailure(folder.url);
        const std::string path = oneLine(textFromBytes(folder.url.native()));
        std::fprintf(stderr, " %2d %s %s: %s%s%s\n", ++number, failure ? " " : "✓",
                     folder.title.c_str(), path.c_str(), failure ? " – " : "",
                     failure ? failure->c_str() : "");
    }
}

/// Reads a line from the terminal; absent at the end of input and when `stop` is requested.
std::optional<std::string> readLine(const std::stop_token& stop) {
    std::array<int, 2> ends{-1, -1};
    if (::pipe(ends.data()) != 0)
        return std::nullopt;
    const FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    // Closing one end of the pipe wakes the poll(2) on the other.
    const std::stop_callback onStop(stop, [&] { writing = FileDescriptor(); });
    std::array<pollfd, 2> sources{{{STDIN_FILENO, POLLIN, 0}, {reading.get(), POLLIN, 0}}};
    while (::poll(sources.data(), sources.size(), -1) < 0 && errno == EINTR) {
    }
    std::string line;
    if (stop.stop_requested() || !std::getline(std::cin, line))
        return std::nullopt;
    return line;
}

std::optional<Folders> ask(const Folders& folders, const std::stop_token& stop) {
    offer(folders);
    std::fputs(question, stderr);
    while (const auto answer = readLine(stop)) {
        if (auto chosen = chosenFolders(folders, *answer))
            return chosen;
        std::fputs(again, stderr);
    }
    return std::nullopt;
}

} // namespace

std::optional<Folders> chosenFolders(const Folders& offered, const std::string& answer) {
    std::string words = answer;
    std::ranges::replace(words, ',', ' ');
    std::istringstream input(words);
    std::vector<std::string> parts{std::istream_iterator<std::string>(input), {}};
    if (parts.empty() || parts == std::vector<std::string>{"all"})
        return offered;
    if (parts == std::vector<std::string>{"none"})
        return Folders{};
    std::vector<bool> taken(offered.size());
    for (const auto& part : parts) {
        std::size_t number = 0;
        const char* end = part.data() + part.size();
        const auto read = std::from_chars(part.data(), end, number);
        if (read.ec != std::errc() || read.ptr != end || number < 1 || number > offered.size())
            return std::nullopt;
        taken[number - 1] = true;
    }
    Folders chosen;
    for (std::size_t i = 0; i < offered.size(); ++i)
        if (taken[i])
            chosen.push_back(offered[i]);
    return chosen;
}

std::optional<Folders> firstSetup(Recorder& recorder, std::optional<SetupChoice> setup,
                                  const std::stop_token& stop) {
    if (read(recorder.preferences(), preferenceKeys::folderSetupCompleted))
        return std::nullopt;
    const auto& recommended = recorder.model().folderAccess().recommendedFolders();
    if (setup == SetupChoice::recommended)
        return firstFolders::readable(recommended);
    if (setup == SetupChoice::none)
        return Folders{};
    if (::isatty(STDIN_FILENO) == 0 || ::isatty(STDERR_FILENO) == 0) {
        qWarning("%s", noTerminal);
        return std::nullopt;
    }
    return ask(recommended, stop);
}

} // namespace tidemark
