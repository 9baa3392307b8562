#include "core/presentation/SystemWords.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

namespace fs = std::filesystem;

bool namesOtherSystem(const std::string& text) {
    static const std::regex names(
        R"(\b(Mac|macOS|macActivity|Finder|Spotlight|XProtect|Gatekeeper|Xcode|IOBluetooth|APFS)\b)"
        R"(|\b(launchAgents|launchDaemons|Command-click)\b)"
        // Not after a slash: these names are not shown as a part of a path.
        R"(|(^|[^/])\b(LaunchAgents?|LaunchDaemons?)\b)"
        R"(|System Settings|Login Items|Full Disk Access|menu bar|–Command–|Control–|⌘|⌃)");
    return std::regex_search(text, names);
}

/// Texts that name the other system and are not shown: paths, names of its packages, and the name
/// of the machine in records of thermal pressure.
constexpr auto notShown = std::to_array<std::string_view>({
    "Mac",
    "XProtect",
    "Gatekeeper Configuration Data",
    "/System/Applications/System Settings.app",
});

/// The string literals of a source, with those that the compiler joins as one.
std::vector<std::string> literalsOf(const std::string& source) {
    std::vector<std::string> literals;
    bool joins = false;
    for (std::size_t i = 0; i < source.size(); ++i) {
        const char c = source[i];
        if (source.compare(i, 2, "//") == 0) {
            i = source.find('\n', i);
        } else if (source.compare(i, 2, "/*") == 0) {
            i = source.find("*/", i) + 1;
        } else if (c == '\'' && i + 2 < source.size() && i > 0 && !std::isalnum(source[i - 1])) {
            i = source.find('\'', i + (source[i + 1] == '\\' ? 3 : 2));
        } else if (c == '"') {
            if (!joins)
                literals.emplace_back();
            for (++i; source[i] != '"'; ++i) {
                const bool isEscaped = source[i] == '\\';
                if (isEscaped)
                    ++i;
                literals.back() += isEscaped && source[i] == 'n' ? '\n' : source[i];
            }
            joins = true;
        } else if (!std::isspace(static_cast<unsigned char>(c))) {
            joins = false;
        }
        if (i == std::string::npos)
            break;
    }
    return literals;
}

bool isInTable(const std::string& literal) {
    return std::ranges::any_of(systemWords::table(), [&](const systemWords::Entry& entry) {
        return entry.source.contains(literal);
    });
}

/// Sources that are compiled on this system, without the table itself.
std::vector<fs::path> sources() {
    std::vector<fs::path> found;
    for (const char* room : {"core", "app", "platform", "recorder", "views", "cli", "desktop"})
        for (const auto& entry : fs::recursive_directory_iterator(fs::path(TIDEMARK_ROOT) / room)) {
            const std::string name = entry.path().filename();
            const bool isCode = name.ends_with(".cpp") || name.ends_with(".h");
            if (isCode && !name.ends_with("Mac.cpp") && name != "SystemWordsLinux.cpp"
                && !entry.path().native().contains("/macos/"))
                found.push_back(entry.path());
        }
    return found;
}

} // namespace

TEST(SystemWords, ReplaceWholeTextsAndPatterns) {
    const struct {
        const char* source;
        const char* here;
    } cases[] = {
        {"Your Mac", "Your Computer"},
        {"Your Macintosh", "Your Macintosh"},
        {"Indexed files across this Mac: {}", "Document folders and recently used files: {}"},
        {"Indexed files across this Mac", "Document folders and recently used files"},
        {"Added 2 recent installation records from macOS. This partial history covers the last 7 "
         "days; future captures will reveal new changes.",
         "Added 2 recent installation records from the system. This partial history covers the "
         "last 7 days; future captures will reveal new changes."},
        {"Requires Full Disk Access", ""},
        {"1. Open Full Disk Access in System Settings.\n2. Use + to add this copy of Tidemark, "
         "then enable it. Restart this same copy if asked.",
         ""},
    };
    for (const auto& [source, here] : cases)
        EXPECT_EQ(systemWords::shown(source), here);
}

/// Fails when a source gets a text that names the other system and has no row in the table.
TEST(SystemWords, HaveARowForEachTextThatNamesTheOtherSystem) {
    std::size_t named = 0;
    for (const auto& path : sources()) {
        std::ifstream file(path);
        const std::string source(std::istreambuf_iterator<char>(file), {});
        for (const std::string& literal : literalsOf(source)) {
            if (!namesOtherSystem(literal) || std::ranges::count(notShown, literal) > 0)
                continue;
            ++named;
            EXPECT_TRUE(isInTable(literal)) << path << ": " << literal;
        }
    }
    EXPECT_GT(named, 40U);
}

TEST(SystemWords, NameNoOtherSystem) {
    for (const auto& [source, here] : systemWords::table()) {
        EXPECT_FALSE(namesOtherSystem(std::string(here))) << here;
        // A row whose source names no other system is superfluous, unless it hides the text or the
        // text describes what only that system does.
        EXPECT_TRUE(namesOtherSystem(std::string(source)) || here.empty()
                    || source.contains("Casks") || source.contains("frontmost application"))
            << source;
    }
}
