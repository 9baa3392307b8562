#include "tests/cli/RecorderProgram.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tidemark;
using test::Outcome;
using test::Words;

namespace {

/// The same questions, asked of a running recorder and of the stored files.
struct HistoryCommands : test::RecorderProgram, testing::WithParamInterface<bool> {
    /// Two captures, between which a folder grew.
    void record() {
        ASSERT_EQ(command({"folders", "add", monitored()}).status, 0);
        if (GetParam()) {
            start();
            ASSERT_TRUE(waitFor("Capture saved")) << logged;
        } else {
            ASSERT_EQ(command({"capture"}).status, 0);
        }
    }
    void change() {
        grow(4);
        const Outcome captured = command({"capture"});
        ASSERT_NE(captured.out.find("Stuff Grew in Size"), std::string::npos) << captured.err;
    }
    /// What a command prints; it must not fail.
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

TEST_P(HistoryCommands, NarrowTheHistory) {
    record();
    change();
    const struct {
        Words words;
        bool shown;
    } cases[] = {
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
    EXPECT_NE(said({"timeline", "--counts"}).find("Storage           1\n"), std::string::npos);
    EXPECT_NE(said({"timeline", "--counts", "--json"}).find("\"storage\":1"), std::string::npos);
    EXPECT_EQ(said({"memory", "--json"}), "[]\n");
    EXPECT_EQ(said({"activity"}), "No activity has been recorded.\n");
}

TEST_P(HistoryCommands, ShowOneEvent) {
    record();
    change();
    const std::string listed = said({"timeline", "--search", "Stuff grew", "--ids"});
    const std::size_t start = listed.find_last_of(' ') + 1;
    const std::string id = listed.substr(start, listed.size() - start - 1);
    const std::string shown = said({"show", id});
    EXPECT_NE(shown.find("Folder path"), std::string::npos) << shown;
    EXPECT_NE(shown.find("part +3 GB: 1 GB → 4 GB\n"), std::string::npos) << shown;
    EXPECT_EQ(said({"show", id.substr(1)}), shown);
    EXPECT_NE(said({"show", id, "--json"}).find("\"id\":\"" + id), std::string::npos);
    EXPECT_EQ(command({"show", "nothing"}).err,
              "tidemark: No event has the identifier \"nothing\".\n");
    EXPECT_EQ(command({"show", ""}).status, 1);
}

TEST_P(HistoryCommands, KeepAndCompareNamedSnapshots) {
    record();
    EXPECT_EQ(said({"snapshot"}), "No snapshot has been saved.\n");
    said({"snapshot", "save", "Before"});
    change();
    EXPECT_NE(said({"snapshot", "list", "--json"}).find("\"name\":\"Before\""), std::string::npos);
    EXPECT_TRUE(shows({"snapshot", "compare", "Before"}));
    EXPECT_TRUE(shows({"snapshot", "compare", "Before", "--timeline"}));
    EXPECT_NE(said({"snapshot", "show", "Before"}).find(monitored()), std::string::npos);

    said({"snapshot", "save", "After"});
    EXPECT_FALSE(shows({"snapshot", "compare", "After"}));
    said({"snapshot", "save", "After"});
    const struct {
        Words words;
        const char* says;
    } refused[] = {
        {{"snapshot", "save", "  "}, "needs a name"},
        {{"snapshot", "show", "Never"}, "There is no snapshot"},
        {{"snapshot", "compare", "After"}, "Several snapshots"},
        {{"snapshot", "delete", "Before"}, "--yes"},
    };
    for (const auto& [words, says] : refused) {
        const Outcome outcome = command(words);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.err.find(says), std::string::npos) << outcome.err;
    }
    said({"snapshot", "delete", "Before", "--yes"});
    EXPECT_EQ(said({"snapshot", "list"}).find("Before"), std::string::npos);
    EXPECT_TRUE(shows({"timeline"})) << "the history stays";
}

TEST_P(HistoryCommands, TakeWordsBehindTwoDashesForWhatTheyAre) {
    record();
    for (const char* name : {"--output=a", "--output=-"})
        EXPECT_EQ(said({"snapshot", "save", "--", name}),
                  "Saved the snapshot \"" + std::string(name) + "\".\n");
    EXPECT_EQ(said({"snapshot", "delete", "--yes", "--", "--output=a"}),
              "Deleted the snapshot \"--output=a\"; the history stays.\n");
    const std::string left = said({"snapshot", "list"});
    EXPECT_NE(left.find("--output=-"), std::string::npos) << left;
    EXPECT_EQ(left.find("--output=a"), std::string::npos) << left;
    EXPECT_EQ(said({"search", "--", "-o"}), "Nothing was found.\n");
}

TEST_P(HistoryCommands, ExportWhatTheFiltersShow) {
    record();
    change();
    const Words view{"export", "--format", "csv", "--place", "storage"};
    const auto with = [&](Words more) {
        more.insert(more.begin(), view.begin(), view.end());
        return more;
    };
    const std::string cleaned = said(view);
    EXPECT_NE(cleaned.find("Grew in Size"), std::string::npos) << cleaned;
    EXPECT_EQ(cleaned.find(monitored()), std::string::npos) << cleaned;
    EXPECT_NE(said(with({"--include-private"})).find(monitored()), std::string::npos);

    const auto file = folder / "history.csv";
    EXPECT_EQ(said(with({"--output", file.native()})), "");
    EXPECT_NE(test::contents(file).find("Grew in Size"), std::string::npos);
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

TEST_P(HistoryCommands, PreviewAndImportWithoutHarm) {
    record();
    const auto journal = folder / "data/Tidemark/journal.json";
    const std::string before = test::contents(journal);
    said({"import", "--preview", "--include-routine"});
    EXPECT_EQ(test::contents(journal), before);
    // What this machine remembers is its own; none of it may be doubled.
    said({"import", "--include-routine"});
    const std::string again = said({"import", "--include-routine"});
    EXPECT_EQ(again.find("Added"), std::string::npos) << again;
}
