#include "tests/cli/RecorderProgram.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tidemark;
using test::Outcome;
using test::Words;

namespace {

/// Each test runs with a recorder and without one, where the commands read the stored files.
struct HistoryCommands : test::RecorderProgram, testing::WithParamInterface<bool> {
    /// Takes the first capture.
    void record() {
        if (GetParam())
            return startRecording();
        ASSERT_EQ(command({"folders", "add", monitored()}).status, 0);
        ASSERT_EQ(command({"capture"}).status, 0);
    }
    void change() {
        grow(4);
        const Outcome captured = command({"capture"});
        ASSERT_TRUE(test::contains(captured.out, "Stuff Grew in Size")) << captured.err;
    }
    /// The output of a command, which must succeed.
    std::string said(const Words& words) const {
        const Outcome outcome = command(words);
        EXPECT_EQ(outcome.status, 0) << words.front() << ": " << outcome.err;
        return outcome.out;
    }
    bool shows(const Words& words) const {
        return said(words).find("Stuff Grew in Size") != std::string::npos;
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Recorder, HistoryCommands, testing::Bool(), [](const auto& parameter) {
    return parameter.param ? "Runs" : "IsAbsent";
});

TEST_P(HistoryCommands, FilterTheHistory) {
    record();
    change();
    const std::pair<Words, bool> cases[] = {
        {{"timeline"}, true},
        {{"timeline", "--window", "day"}, true},
        {{"timeline", "--window", "2d"}, true},
        {{"timeline", "--since", "1h"}, true},
        {{"timeline", "--since", "2099-01-01"}, false},
        {{"timeline", "--category", "storage"}, true},
        {{"timeline", "--category", "applications", "--category", "Storage"}, true},
        {{"timeline", "--category", "background"}, false},
        {{"timeline", "--place", "storage"}, true},
        {{"timeline", "--place", "devices"}, false},
        {{"timeline", "--search", "sTuFf"}, true},
        {{"timeline", "--search", "Stoff"}, false},
        {{"search", " stuff grew "}, true},
        {{"search", "Stoff"}, false},
    };
    for (const auto& [words, shown] : cases)
        EXPECT_EQ(shows(words), shown) << testing::PrintToString(words);
    EXPECT_TRUE(test::contains(said({"timeline", "--counts"}), "Storage           1\n"));
    EXPECT_TRUE(test::contains(said({"timeline", "--counts", "--json"}), "\"storage\":1"));
    EXPECT_EQ(said({"memory", "--json"}), "[]\n");
    EXPECT_EQ(said({"activity"}), "No activity has been recorded.\n");
}

TEST_P(HistoryCommands, SaveAndCompareNamedSnapshots) {
    record();
    EXPECT_EQ(said({"snapshot"}), "No snapshot has been saved.\n");
    said({"snapshot", "save", "Before"});
    change();
    EXPECT_TRUE(test::contains(said({"snapshot", "list", "--json"}), "\"name\":\"Before\""));
    EXPECT_TRUE(shows({"snapshot", "compare", "Before"}));
    EXPECT_TRUE(shows({"snapshot", "compare", "Before", "--timeline"}));
    EXPECT_TRUE(test::contains(said({"snapshot", "show", "Before"}), monitored()));

    said({"snapshot", "save", "After"});
    EXPECT_FALSE(shows({"snapshot", "compare", "After"}));
    said({"snapshot", "save", "After"});
    const std::pair<Words, const char*> refused[] = {
        {{"snapshot", "save", "  "}, "needs a name"},
        {{"snapshot", "show", "Never"}, "There is no snapshot"},
        {{"snapshot", "compare", "After"}, "Several snapshots"},
        {{"snapshot", "delete", "Before"}, "--yes"},
    };
    for (const auto& [words, says] : refused) {
        const Outcome outcome = command(words);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_TRUE(test::contains(outcome.err, says));
    }
    said({"snapshot", "delete", "Before", "--yes"});
    EXPECT_FALSE(test::contains(said({"snapshot", "list"}), "Before"));
    EXPECT_TRUE(shows({"timeline"})) << "the history stays";
}

TEST_P(HistoryCommands, TakeWordsAfterTwoDashesAsArguments) {
    record();
    for (const char* name : {"--output=a", "--output=-"})
        EXPECT_EQ(said({"snapshot", "save", "--", name}),
                  "Saved the snapshot \"" + std::string(name) + "\".\n");
    EXPECT_EQ(said({"snapshot", "delete", "--yes", "--", "--output=a"}),
              "Deleted the snapshot \"--output=a\"; the history stays.\n");
    const std::string left = said({"snapshot", "list"});
    EXPECT_TRUE(test::contains(left, "--output=-"));
    EXPECT_FALSE(test::contains(left, "--output=a"));
    EXPECT_EQ(said({"search", "--", "-o"}), "Nothing was found.\n");
}

TEST_P(HistoryCommands, ExportTheFilteredEvents) {
    record();
    change();
    const Words view{"export", "--format", "csv", "--place", "storage"};
    const auto with = [&](Words more) {
        more.insert(more.begin(), view.begin(), view.end());
        return more;
    };
    const std::string cleaned = said(view);
    EXPECT_TRUE(test::contains(cleaned, "Grew in Size"));
    EXPECT_FALSE(test::contains(cleaned, monitored()));
    EXPECT_TRUE(test::contains(said(with({"--include-private"})), monitored()));

    const auto file = folder / "history.csv";
    EXPECT_EQ(said(with({"--output", file.native()})), "");
    EXPECT_TRUE(test::contains(test::contents(file), "Grew in Size"));
    EXPECT_EQ(test::modeOf(file), 0600U);
    const auto pipe = folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(command(with({"--output", pipe.native()})).status, 1);
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
    const Outcome nowhere = command(with({"--output", (folder / "none/history.csv").native()}));
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_NE(nowhere.err, "");
    EXPECT_EQ(command({"export", "--format", "json", "--search", "Stoff"}).status, 1);
}

TEST_P(HistoryCommands, PreviewChangesNothingAndImportAddsNoDuplicates) {
    record();
    const auto journal = folder / "data/Tidemark/journal.json";
    const std::string before = test::contents(journal);
    said({"import", "--preview", "--include-routine"});
    EXPECT_EQ(test::contents(journal), before);
    // The records depend on this machine. A second import must not add any of them again.
    said({"import", "--include-routine"});
    const std::string again = said({"import", "--include-routine"});
    EXPECT_FALSE(test::contains(again, "Added"));
}
