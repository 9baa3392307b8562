#include "tests/cli/RecorderProgram.h"

#include <filesystem>
#include <sstream>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tidemark;
using test::Outcome;
using test::Words;

namespace {

/// Each test runs twice: with a recorder that carries out the commands, and without one, when the
/// process of each command reads and writes the files itself.
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
    std::string outputOf(const Words& words) const {
        const Outcome outcome = command(words);
        EXPECT_EQ(outcome.status, 0) << words.front() << ": " << outcome.err;
        return outcome.out;
    }
    bool shows(const Words& words) const {
        return outputOf(words).find("Stuff Grew in Size") != std::string::npos;
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
    EXPECT_TRUE(test::contains(outputOf({"timeline", "--counts"}), "Storage           1\n"));
    EXPECT_TRUE(test::contains(outputOf({"timeline", "--counts", "--json"}), "\"storage\":1"));
    EXPECT_EQ(outputOf({"memory", "--json"}), "[]\n");
    EXPECT_EQ(outputOf({"activity"}), "No activity has been recorded.\n");
}

TEST_P(HistoryCommands, ShowOneEvent) {
    record();
    change();
    const std::string listed = outputOf({"timeline", "--search", "Stuff grew", "--ids"});
    const std::size_t start = listed.find_last_of(' ') + 1;
    const std::string id = listed.substr(start, listed.size() - start - 1);
    const std::string shown = outputOf({"show", id});
    EXPECT_NE(shown.find("Folder path"), std::string::npos) << shown;
    EXPECT_NE(shown.find("part +3 GB: 1 GB → 4 GB\n"), std::string::npos) << shown;
    EXPECT_EQ(outputOf({"show", id.substr(1)}), shown);
    EXPECT_NE(outputOf({"show", id, "--json"}).find("\"id\":\"" + id), std::string::npos);
    EXPECT_EQ(command({"show", "nothing"}).err,
              "tidemark: No event has the identifier \"nothing\".\n");
    EXPECT_EQ(command({"show", ""}).status, 1);
}

TEST_P(HistoryCommands, SaveAndCompareNamedSnapshots) {
    record();
    EXPECT_EQ(outputOf({"snapshot"}), "No snapshot has been saved.\n");
    outputOf({"snapshot", "save", "Before"});
    change();
    EXPECT_TRUE(test::contains(outputOf({"snapshot", "list", "--json"}), "\"name\":\"Before\""));
    EXPECT_TRUE(shows({"snapshot", "compare", "Before"}));
    EXPECT_TRUE(shows({"snapshot", "compare", "Before", "--timeline"}));
    EXPECT_TRUE(test::contains(outputOf({"snapshot", "show", "Before"}), monitored()));

    outputOf({"snapshot", "save", "After"});
    EXPECT_FALSE(shows({"snapshot", "compare", "After"}));
    outputOf({"snapshot", "save", "After"});
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
    outputOf({"snapshot", "delete", "Before", "--yes"});
    EXPECT_FALSE(test::contains(outputOf({"snapshot", "list"}), "Before"));
    EXPECT_TRUE(shows({"timeline"})) << "the history stays";
}

TEST_P(HistoryCommands, TakeWordsAfterTwoDashesAsArguments) {
    record();
    for (const char* name : {"--output=a", "--output=-"})
        EXPECT_EQ(outputOf({"snapshot", "save", "--", name}),
                  "Saved the snapshot \"" + std::string(name) + "\".\n");
    EXPECT_EQ(outputOf({"snapshot", "delete", "--yes", "--", "--output=a"}),
              "Deleted the snapshot \"--output=a\"; the history stays.\n");
    const std::string left = outputOf({"snapshot", "list"});
    EXPECT_TRUE(test::contains(left, "--output=-"));
    EXPECT_FALSE(test::contains(left, "--output=a"));
    EXPECT_EQ(outputOf({"search", "--", "-o"}), "Nothing was found.\n");
}

TEST_P(HistoryCommands, ExportTheFilteredEvents) {
    record();
    change();
    const Words view{"export", "--format", "csv", "--place", "storage"};
    const auto with = [&](Words more) {
        more.insert(more.begin(), view.begin(), view.end());
        return more;
    };
    const std::string cleaned = outputOf(view);
    EXPECT_TRUE(test::contains(cleaned, "Grew in Size"));
    EXPECT_FALSE(test::contains(cleaned, monitored()));
    EXPECT_TRUE(test::contains(outputOf(with({"--include-private"})), monitored()));

    const auto file = folder / "history.csv";
    EXPECT_EQ(outputOf(with({"--output", file.native()})), "");
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
    outputOf({"import", "--preview", "--include-routine"});
    EXPECT_EQ(test::contents(journal), before);
    // The records depend on this machine. A second import must not add any of them again.
    outputOf({"import", "--include-routine"});
    const std::string again = outputOf({"import", "--include-routine"});
    EXPECT_FALSE(test::contains(again, "Added"));
}

TEST_P(HistoryCommands, ShowSizesOverTimeAndCompareMoments) {
    record();
    EXPECT_FALSE(test::contains(outputOf({"grew"}), "another size")) << "of a single capture";
    change();
    const std::string chart = outputOf({"chart", "Stuff", "--width", "60"});
    EXPECT_TRUE(test::contains(chart, "from 1 GB to 4 GB, last 4 GB."));
    EXPECT_NE(chart.find('*'), std::string::npos);
    std::istringstream lines(chart.substr(chart.find('\n')));
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(line.size(), 60U) << line;
    EXPECT_TRUE(test::contains(outputOf({"chart", "Stuff", "--json"}), "\"bytes\":4000000000"));
    EXPECT_TRUE(test::contains(outputOf({"chart", "--table"}), "When"));
    EXPECT_TRUE(test::contains(command({"chart", "Nothing"}).err, "No size of \"Nothing\""));

    EXPECT_TRUE(test::contains(outputOf({"grew", "--since", "1h"}), "+3 GB  100 %  Stuff"));
    EXPECT_TRUE(test::contains(outputOf({"grew", "--json"}), "\"change\":3000000000"));
    EXPECT_TRUE(test::contains(outputOf({"digest", "--since", "1h"}), "Storage: 1"));

    EXPECT_TRUE(shows({"diff", "@-1"}));
    EXPECT_TRUE(shows({"diff", "@-1", "today"}));
    EXPECT_TRUE(test::contains(outputOf({"diff", "@0", "@-1"}), "Stuff Shrank in Size"));
    EXPECT_TRUE(test::contains(outputOf({"diff", "today", "latest"}), "Both are the same capture"));
    EXPECT_EQ(outputOf({"diff", "@0", "@0", "--json"}), "[]\n");
    const std::string report = (folder / "report.csv").native();
    outputOf({"diff", "@-1", "@0", "--report", "csv", "--output", report});
    EXPECT_TRUE(test::contains(test::contents(report), "\"Compare States\""));
    EXPECT_TRUE(test::contains(command({"diff", "@-2"}).err, "There is no capture \"@-2\""));
}

TEST_P(HistoryCommands, KeepDailySizesApartFromTheHistory) {
    record();
    change();
    const auto document = folder / "data/Tidemark/storage-history.json";
    // The recorder writes the document after the capture. If no recorder runs, the next command
    // that locks the folder writes it.
    if (!GetParam())
        outputOf({"snapshot", "save", "Now"});
    const auto hasSize = [&] {
        return command({"export", "--sizes", "--format", "csv"})
            .out.contains("\"folder\",\"Stuff\",\"\",\"\",\"4000000000\"");
    };
    int attempts = 600;
    while (!hasSize() && --attempts > 0)
        ;
    EXPECT_GT(attempts, 0);
    EXPECT_EQ(test::modeOf(document), 0600U);
    if (GetParam())
        return;
    folder.write("data/Tidemark/storage-history.json", "{");
    const Outcome outcome = command({"chart", "Stuff"});
    EXPECT_EQ(outcome.status, 0) << "what the history has is drawn";
    EXPECT_TRUE(test::contains(outcome.err, "storage-history.json could not be read"));
    EXPECT_TRUE(test::contains(outputOf({"status"}), "storage-history.json could not be read"));
    EXPECT_TRUE(test::contains(command({"export", "--sizes", "--format", "csv"}).err,
                               "storage-history.json could not be read"));
    EXPECT_EQ(command({"capture"}).status, 0);
    EXPECT_EQ(test::contents(document), "{");
}
