#include "recorder/PublicText.h"

#include "tests/cli/RecorderProgram.h"

#include <sys/stat.h>

using namespace tidemark;
using test::RecorderProgram;

TEST(PublicText, HasNoPathsNamesOrQuotedTexts) {
    const std::vector<std::string> names{"ada", "Ada Lovelace", "lantern", "ada-laptop"};
    const std::tuple<const char*, const char*> cases[] = {
        {"Capture saved", "Capture saved"},
        {"/home/ada/.local/share/Tidemark/journal.json could not be read: Permission denied.",
         "journal.json could not be read: Permission denied."},
        {"/d/storage-measurements.json could not be read: [\"/home/ada/Letters\"].bytes: not valid",
         "storage-measurements.json could not be read: [\"[name]\"].bytes: not valid"},
        {"Recent files can't be recorded. /home/ada/My files/so it is could not be opened: gone.",
         "Recent files can't be recorded. [path] could not be opened: gone."},
        {"The folder can't be included. /srv/what is this is not a folder.",
         "The folder can't be included. [path] is not a folder."},
        {"They have been set aside as /home/ada/settings.json.damaged-1; a copy holds.",
         "They have been set aside as [path]."},
        {"The folder “Letters to “her”” is gone.", "The folder “[name]” is gone."},
        {"The network \"Ada's\" was left by ada at lantern.", "The network \"[name]\" was left by "
                                                              "[name] at [name]."},
        {"Adagio is no name.", "Adagio is no name."},
        {"ada has left ada-laptop.", "[name] has left [name]."},
    };
    for (const auto& [sentence, shown] : cases)
        EXPECT_EQ(publicText::of(sentence, names), shown);
}

TEST_F(RecorderProgram, LogsWithoutControlCharacters) {
    folder.write("da\033[2J\nta/Tidemark/journal.json", "{]");
    more = {"XDG_DATA_HOME=" + (folder / "da\033[2J\nta").native()};
    start();
    EXPECT_TRUE(waitFor("could not be read")) << logged;
    EXPECT_TRUE(test::contains(logged, "/da\uFFFD[2J\uFFFDta/Tidemark/journal.json"));
}

TEST_F(RecorderProgram, LogsLevelsAndOmitsPathsOnlyForTheSystemJournal) {
    folder.write("data/Tidemark/journal.json", "{]");
    for (const bool isJournal : {true, false}) {
        test::Pipe pipe;
        struct stat status{};
        ASSERT_EQ(::fstat(pipe.writing.get(), &status), 0);
        more = {"JOURNAL_STREAM=" + std::to_string(status.st_dev) + ":"
                + std::to_string(isJournal ? status.st_ino : 0)};
        startWith(pipe.writing.get());
        pipe.writing.reset();
        log = std::move(pipe.reading);
        logged.clear();
        EXPECT_TRUE(waitFor("could not be read")) << logged;
        EXPECT_EQ(test::contains(logged, "<6>Starting observation service\n"), isJournal);
        EXPECT_EQ(test::contains(logged, "<3>Observation startup failed"), isJournal);
        EXPECT_EQ(test::contains(logged, folder.path().native()), !isJournal) << logged;
        EXPECT_TRUE(test::contains(logged, "journal.json"));
        stop(SIGTERM);
    }
}
