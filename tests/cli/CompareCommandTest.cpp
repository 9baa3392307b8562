#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"
#include "core/journal/Journal.h"
#include "tests/cli/Program.h"
#include "tests/support/Observations.h"
#include "tests/support/SharedRecords.h"
#include "tests/support/Terminal.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tidemark;
using test::Outcome;
using test::Output;
using test::run;

namespace {

const std::string before = TIDEMARK_SAMPLES "/before.json";
const std::string after = TIDEMARK_SAMPLES "/after.json";

std::size_t linesIn(const std::string& text) {
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

std::string written(const test::TemporaryFolder& folder, const char* name,
                    const Snapshot& snapshot) {
    return folder.write(name, json::encoded(snapshot)).native();
}

} // namespace

TEST(CompareCommand, PrintsTheChangesAsText) {
    const Outcome outcome = run({"compare", before, after});
    EXPECT_EQ(outcome,
              (Outcome{0,
                       R"(What changed between 28 Feb 2026, 19:33:20 and 28 Feb 2026, 20:03:20:

Saturday, 28 February 2026
● 19:33 – 20:03  Lantern Updated
                 3.4 → 3.5
● 19:33 – 20:03  Paperweight Removed
                 Previously 1.9.2
● 19:33 – 20:03  Sextant Installed
                 2.0
● 19:33 – 20:03  Background Item Changed
                 User service · org.example.lantern.sync
● 19:33 – 20:03  Less Space Available
                 Main Disk · 7 GB decrease in free space · 205 GB remaining
● 19:32 – 20:02  Trash Is Now Empty
                 Previously 3 items · 2.35 GB · Observed empty
● 19:32 – 20:02  Movies Grew in Size
                 +6 GB · Drafts +6 GB
)",
                       ""}));
    EXPECT_EQ(run({"compare", before, before}).out,
              "Nothing changed between 28 Feb 2026, 19:33:20 and 28 Feb 2026, 19:33:20.\n");
}

TEST(CompareCommand, PrintsLocalTimesWithTheYearWhereItDiffers) {
    const std::string rule = "TZ=CET-1CEST,M3.5.0,M10.5.0/3";
    EXPECT_EQ(run({"compare", before, before}, Output::file, {rule}).out,
              "Nothing changed between 28 Feb 2026, 20:33:20 and 28 Feb 2026, 20:33:20.\n");
    const test::TemporaryFolder folder;
    Snapshot late = test::snapshot(2);
    test::add(late.applications, test::application("A"));
    const std::string to = written(folder, "to", late);
    const std::pair<double, const char*> cases[] = {
        {60, "● 00:01 – 00:02  A"},
        {-60, "● 31 Dec 2000 23:59 – 00:02  A"},
    };
    for (const auto& [seconds, line] : cases) {
        Snapshot early = test::snapshot(1);
        early.timestamp = Date{seconds};
        const Outcome outcome = run({"compare", written(folder, "from", early), to});
        EXPECT_TRUE(test::contains(outcome.out, line));
    }
}

TEST(CompareCommand, PrintsTheEventsAsJson) {
    const auto read = [](const std::string& file) {
        return json::decode<Snapshot>(test::contents(file));
    };
    const Outcome outcome = run({"compare", "--json", before, after});
    EXPECT_EQ(
        outcome,
        (Outcome{0, json::encoded(Journal::eventsBetween(read(before), read(after))) + "\n", ""}));
    EXPECT_EQ(run({"compare", "--json", before, before}).out, "[]\n");
}

TEST(CompareCommand, UsesColourOnlyOnATerminalThatSupportsIt) {
    if (!test::hasTerminals())
        GTEST_SKIP() << "this machine has no terminals";
    const std::tuple<Output, std::vector<std::string>, bool> cases[] = {
        {Output::terminal, {"TERM=xterm"}, true},
        {Output::terminal, {"TERM=xterm", "NO_COLOR="}, true},
        {Output::terminal, {"TERM=xterm", "NO_COLOR=1"}, false},
        {Output::terminal, {"TERM=dumb"}, false},
        {Output::terminal, {"TERM="}, false},
        {Output::terminal, {}, false},
        {Output::file, {"TERM=xterm"}, false},
    };
    for (const auto& [output, environment, hasEscapes] : cases) {
        const Outcome outcome = run({"compare", before, after}, output, environment);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_TRUE(test::contains(outcome.out, "Lantern Updated"));
        EXPECT_EQ(outcome.out.find('\033') != std::string::npos, hasEscapes)
            << testing::PrintToString(environment);
    }
}

TEST(CompareCommand, FailsWithOneSentenceAndPrintsNothing) {
    const test::TemporaryFolder folder;
    const auto file = [&](const char* name) { return (folder / name).native(); };
    ::mkfifo(file("pipe").c_str(), 0600);
    folder.write("no json", "{");
    folder.write("shape.json", R"({"id":"x\ny"})");
    folder.write("change.json", "[]");
    std::ofstream(file("giant.json")) << "{";
    std::filesystem::resize_file(file("giant.json"), 3'000'000'000);
    const std::pair<std::string, std::string> cases[] = {
        {file("missing"), " could not be read: No such file or directory."},
        {folder.path().native(), " could not be read: Is a directory."},
        {file("pipe"), " is not a regular file."},
        {"/dev/zero", " is not a regular file."},
        {file("giant.json"),
         " could not be read: it has more than 2 GB, the most a document may have."},
        {file("no json"), " is not a stored observation: not valid JSON at byte 2."},
        {file("shape.json"), " is not a stored observation: id: expected a UUID, found text."},
        {file("change.json"), " is not a stored observation: expected an object, found an array."},
    };
    for (const auto& [path, reason] : cases) {
        std::string sentence = "tidemark: ";
        sentence.append(path).append(reason).append("\n");
        const Outcome expected{1, "", sentence};
        EXPECT_EQ(run({"compare", before, path}).err, expected.err);
        EXPECT_EQ(run({"compare", "--json", path, after}), expected);
    }
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"compare", "--json", before, after},
          {"--help"},
          {"compare", "--help"},
          {"--version"}})
        EXPECT_EQ(run(words, Output::fullDisk),
                  (Outcome{1, "",
                           "tidemark: Standard output could not be written: "
                           "No space left on device.\n"}));
}

TEST(CompareCommand, RefusesWrongUsage) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"compare"},
                                                      {"compare", before},
                                                      {"compare", "a", "b", "c"},
                                                      {"compare", "--yaml", before, after},
                                                      {"contrast"},
                                                      {"--nonsense"}}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments.back();
        EXPECT_EQ(outcome.out, "");
        EXPECT_NE(outcome.err, "");
    }
    EXPECT_EQ(run({"--version"}).out.rfind("tidemark ", 0), 0U);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"--help"}, {"compare", "--help"}}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_TRUE(test::contains(outcome.out, "compare"));
    }
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"clips"}, {"clips", "--help"}})
        EXPECT_TRUE(test::contains(run(arguments).out, "\nUsage: tidemark clips ["));
}

TEST(CompareCommand, PrintsHostileNamesOnOneLine) {
    const test::TemporaryFolder folder;
    Snapshot late = test::snapshot(2);
    Application app = test::application("Evil\nFake line\r\033[2J");
    app.version = "1\u2028"
                  "2";
    late.applications.emplace(test::shared(app));
    const std::string from = written(folder, "a file with \"quotes\"", test::snapshot(1));
    const std::string to = written(folder, "line\nfeed.json", late);
    const Outcome outcome = run({"compare", from, to});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(linesIn(outcome.out), 5U) << outcome.out;
    EXPECT_EQ(outcome.out.find_first_of("\r\033"), std::string::npos);
    EXPECT_TRUE(test::contains(outcome.out, "Evil\uFFFDFake line\uFFFD\uFFFD[2J Installed"));

    folder.write("line\nfeed.json", "");
    EXPECT_EQ(run({"compare", from, to}).err,
              "tidemark: " + folder.path().native()
                  + "/line\uFFFDfeed.json is not a stored observation: the document is empty.\n");
}

TEST(CompareCommand, HandlesExtremeDatesAndSizes) {
    const test::TemporaryFolder folder;
    Snapshot early = test::snapshot(1);
    Snapshot late = test::snapshot(2);
    early.timestamp = Date{-1e300};
    late.timestamp = Date{1e300};
    early.expectedCaptureInterval = late.expectedCaptureInterval = 1e-300;
    early.volumeID = late.volumeID = "V";
    early.freeBytes = INT64_MIN;
    late.freeBytes = INT64_MAX;
    FolderSize was = test::folder("/a", INT64_MIN, {{"x", INT64_MAX}, {"y", INT64_MIN}});
    FolderSize is = test::folder("/a", INT64_MAX, {{"x", INT64_MIN}, {"y", INT64_MAX}});
    was.measuredAt = Date{1e308};
    is.measuredAt = Date{5e-324};
    early.folders = test::shared(was, test::trash(INT64_MAX, INT64_MAX));
    late.folders = test::shared(is, test::trash(INT64_MIN, 0));
    for (int i = 0; i < 5000; ++i)
        test::add(late.applications, test::application(std::to_string(i)));
    const std::string from = written(folder, "from", early);
    const std::string to = written(folder, "to", late);
    for (const bool backwards : {false, true}) {
        const Outcome outcome = backwards ? run({"compare", to, from}) : run({"compare", from, to});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
        EXPECT_GT(linesIn(outcome.out), 10'000U);
    }
}
