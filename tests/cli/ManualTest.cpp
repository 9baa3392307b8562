#include "tests/cli/Program.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

std::string fileOf(const std::string& name) {
    return std::string(TIDEMARK_MANUAL) + "/" + name;
}

std::string contentsOf(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// What a shell command prints, on either stream.
std::string printed(const std::string& command) {
    std::string text;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(
        ::popen(("{ " + command + "; } 2>&1").c_str(), "r"), &::pclose);
    for (int c = std::fgetc(pipe.get()); c != EOF; c = std::fgetc(pipe.get()))
        text += static_cast<char>(c);
    return text;
}

bool isInstalled(const std::string& program) {
    return !printed("command -v " + program).empty();
}

/// The names of the commands in a help text: the first words of the lines that are indented by two
/// spaces and go on with a small letter. Options begin with a hyphen, values with a capital.
std::vector<std::string> listedIn(const std::string& help) {
    std::vector<std::string> names;
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("  ") && line.size() > 2 && line[2] >= 'a' && line[2] <= 'z')
            names.push_back(line.substr(2, line.find(' ', 2) - 2));
    return names;
}

/// What bash offers after these words, the last of which is being typed.
std::string completedByBash(const std::string& words) {
    return printed("bash -c 'source " + fileOf("bash/tidemark") + "; COMP_WORDS=(" + words
                   + "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _tidemark; "
                     "printf \"%s|\" \"${COMPREPLY[@]}\"'");
}

/// The same for fish.
std::string completedByFish(const std::string& words) {
    const test::TemporaryFolder home;
    return printed("HOME='" + home.path().native() + "' fish -c 'source "
                   + fileOf("fish/tidemark.fish") + "; complete -C \"" + words
                   + "\" | cut -f1 | tr \"\\n\" \"|\"'");
}

} // namespace

TEST(Manual, HasASectionForEachCommandAndItsOptions) {
    const std::string page = contentsOf(fileOf("page/tidemark.1"));
    const auto commands = listedIn(test::run({}).out);
    ASSERT_GT(commands.size(), 20U);
    const std::string readme = contentsOf(TIDEMARK_ROOT "/README.md");
    const auto hasSection = [&](const std::string& title) {
        return test::contains(page, "\n.SS " + title + "\n");
    };
    for (const auto& command : commands) {
        EXPECT_TRUE(test::contains(readme, "`" + command)) << command;
        const auto inner = listedIn(test::run({command, "--help"}).out);
        if (inner.empty()) {
            EXPECT_TRUE(hasSection(command));
        }
        const std::string title = command + " ";
        for (const auto& word : inner)
            EXPECT_TRUE(hasSection(title + word)) << word;
    }
    EXPECT_TRUE(test::contains(page, R"(\fB\-o\fR, \fB\-\-output\fR \fIFILE\fR)"));
}

TEST(Manual, IsReadWithoutWarnings) {
    if (isInstalled("groff")) {
        for (const char* page : {"page/tidemark.1", "page/tidemark-desktop.1"})
            EXPECT_EQ(printed("groff -k -man -ww -z " + fileOf(page)), "");
    }
    for (const auto& [shell, file] : std::vector<std::pair<std::string, std::string>>{
             {"bash", "bash/tidemark"}, {"zsh", "zsh/_tidemark"}, {"fish", "fish/tidemark.fish"}})
        if (isInstalled(shell)) {
            EXPECT_EQ(printed(shell + " -n " + fileOf(file)), "");
        }
}

TEST(Manual, CompletesCommandsOptionsAndValuesInBash) {
    struct Case {
        const char* words;
        const char* offered;
    };
    for (const auto& [words, offered] : std::vector<Case>{
             {"tidemark sn", "snapshot|"},
             {"tidemark snapshot s", "save|show|"},
             {"tidemark snapshot save --", "--help|--version|"},
             {"tidemark timeline --c", "--category|--counts|"},
             {"tidemark timeline --category B", "Background\\ items|"},
             {"tidemark timeline --category = B", "Background\\ items|"},
             {"tidemark timeline --since x", "|"},
             {"tidemark schedule every", "everyThreeHours|everySixHours|everyTwelveHours|"},
             {"tidemark search run --p", "--panel|"},
             {"tidemark folders add /et", "/etc|"},
             {"tidemark export --output /et", "/etc|"},
         })
        EXPECT_EQ(completedByBash(words), offered) << words;
}

TEST(Manual, CompletesCommandsOptionsAndValuesInFish) {
    if (!isInstalled("fish"))
        GTEST_SKIP() << "fish is not installed";
    for (const auto& [words, offered] : std::vector<std::pair<const char*, const char*>>{
             {"tidemark sn", "snapshot|"},
             {"tidemark snapshot s", "save|show|"},
             {"tidemark snapshot --json s", "save|show|"},
             {"tidemark snapshot save --", "--help|--version|"},
             {"tidemark show --", "--help|--json|--version|"},
             {"tidemark search snapshot s", ""},
             {"tidemark snapshot show capture --", "--help|--json|--version|"},
             {"tidemark timeline --c", "--category|--counts|"},
             {"tidemark timeline --category B", "Background items|"},
             {"tidemark schedule every", "everySixHours|everyThreeHours|everyTwelveHours|"},
         })
        EXPECT_EQ(completedByFish(words), offered) << words;
}
