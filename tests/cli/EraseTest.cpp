#include "tests/cli/RecorderProgram.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/Terminal.h"

#include <algorithm>

#include <fcntl.h>
#include <stdlib.h>

using namespace tidemark;
using test::Outcome;
using test::Words;

namespace {

struct Erase : test::RecorderProgram {
    /// The paths of all entries except the monitored folder, with the contents of files.
    std::string remaining() const {
        Words lines;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
            const auto path = entry.path().lexically_relative(folder.path()).native();
            if (path.starts_with("Stuff"))
                continue;
            lines.push_back(path
                            + (entry.is_regular_file() && !entry.is_symlink()
                                   ? ": " + test::contents(entry.path())
                                   : ""));
        }
        std::ranges::sort(lines);
        std::string text;
        for (const auto& line : lines)
            text += line + "\n";
        return text;
    }
    /// Makes a history by taking a capture without a recorder.
    void record() {
        ASSERT_EQ(command({"folders", "add", monitored()}).status, 0);
        ASSERT_EQ(command({"capture"}).status, 0);
    }
};

/// The name of the files with a clip's contents.
const std::string digest(64, 'A');
const std::string uuid = "01234567-89AB-4CDE-8F01-23456789ABCD";

} // namespace

TEST_F(Erase, EndsTheRecorderAndRemovesAllOfItsFilesAndNoOthers) {
    startRecording();
    ASSERT_EQ(command({"snapshot", "save", "Before"}).status, 0);
    const Words all{"data/Tidemark/memory-payloads/" + digest + ".data",
                    "data/Tidemark/memory-payloads/." + digest + ".text.new-" + uuid,
                    "data/Tidemark/.journal.json.new-" + uuid,
                    "data/Tidemark/Backups/pre-v2/complete.json",
                    "data/Tidemark/Backups/.pre-v2-" + uuid + "/journal.json",
                    "data/Kelda/journal.json",
                    "config/Tidemark/settings.json.damaged-2026-01-01T00.00.00Z",
                    "config/autostart/app.tidemark.desktop"};
    for (const std::string& own : all)
        folder.write(own, "x");
    EXPECT_EQ(command({"erase", "--yes"}),
              (Outcome{0, "Removed all that Tidemark kept for you.\n", ""}));
    EXPECT_EQ(stop(0), 0) << "the recorder has ended by itself";
    EXPECT_EQ(remaining(), "config\nconfig/autostart\ndata\ndata/Kelda\nrun\n");
    EXPECT_EQ(command({"erase", "--yes"}).out, "There is nothing of Tidemark to remove.\n");

    record();
    const Words foreign{"data/Tidemark/notes.txt",
                        "data/Tidemark/memory-payloads/photo.data",
                        "data/Tidemark/Backups/pre-v2/notes.txt",
                        "data/Tidemark/.journal.json.new-draft",
                        "config/Tidemark/settings.json.mine",
                        "config/autostart/other.desktop"};
    for (const auto& file : foreign)
        folder.write(file, "mine");
    EXPECT_EQ(command({"erase", "--yes"}).out,
              "Removed all that Tidemark kept for you.\n"
              "What is not Tidemark's own stays in its folders: 5 files.\n");
    for (const auto& file : foreign)
        EXPECT_EQ(test::contents(folder / file), "mine") << file;
    EXPECT_FALSE(std::filesystem::exists(folder / "data/Tidemark/recorder.lock"));
}

TEST_F(Erase, RemovesNothingIfALinkOrFolderHasTheNameOfAFile) {
    const auto data = folder / "data/Tidemark";
    const auto moved = folder / "moved";
    const std::tuple<const char*, std::function<void()>, std::function<void()>> cases[] = {
        {"journal.json is a link",
         [&] {
             std::filesystem::rename(data / "journal.json", moved);
             std::filesystem::create_symlink(moved, data / "journal.json");
         },
         [&] { std::filesystem::rename(moved, data / "journal.json"); }},
        {"system-activity.json is a folder",
         [&] { folder.makeFolder("data/Tidemark/system-activity.json"); },
         [&] { std::filesystem::remove(data / "system-activity.json"); }},
        {"memory-payloads is a link",
         [&] {
             std::filesystem::remove_all(data / "memory-payloads");
             folder.write("moved/" + digest + ".data", "x");
             std::filesystem::create_directory_symlink(moved, data / "memory-payloads");
         },
         [&] {
             std::filesystem::remove_all(moved);
             std::filesystem::remove(data / "memory-payloads");
         }},
        {"data/Tidemark is a link",
         [&] {
             std::filesystem::rename(data, moved);
             std::filesystem::create_directory_symlink(moved, data);
         },
         [&] {
             std::filesystem::remove(data);
             std::filesystem::rename(moved, data);
         }},
    };
    record();
    for (const auto& [says, obstruct, clear] : cases) {
        obstruct();
        const std::string before = remaining();
        const Outcome refused = command({"erase", "--yes"});
        EXPECT_EQ(refused.status, 1) << says;
        EXPECT_TRUE(test::contains(refused.err, "Nothing was removed: "));
        EXPECT_TRUE(test::contains(refused.err, says));
        EXPECT_EQ(remaining(), before) << says;
        clear();
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path()))
        EXPECT_TRUE(::geteuid() != 0 || ::lchown(entry.path().c_str(), 65534, 65534) == 0);
    std::filesystem::permissions(folder / "config/Tidemark", std::filesystem::perms(0500));
    const std::string before = remaining();
    {
        const test::OrdinaryUser user(folder.path());
        EXPECT_TRUE(test::contains(command({"erase", "--yes"}).err, "could not be changed"));
    }
    EXPECT_EQ(remaining(), before);
}

TEST_F(Erase, RemovesNothingWhileAServiceThatCantBeTurnedOffIsEnabled) {
    record();
    // Only this link shows that the service is enabled: in the made-up runtime folder of the
    // command, no service manager answers.
    const auto link = folder / "config/systemd/user/default.target.wants/tidemark.service";
    std::filesystem::create_directories(link.parent_path());
    std::filesystem::create_symlink("/nonexistent", link);
    const auto before = remaining();
    for (const Words& words : {Words{"erase", "--yes"}, Words{"erase"}}) {
        const Outcome refused = command(words);
        EXPECT_EQ(refused.status, 1);
        EXPECT_TRUE(test::contains(refused.err, "Nothing was removed: the service starts with your "
                                                "session, and it can't be turned off from here. "));
    }
    EXPECT_EQ(remaining(), before);
    std::filesystem::remove(link);
    EXPECT_EQ(command({"erase", "--yes"}).status, 0);
}

TEST_F(Erase, ListsTheFilesAndAsksBeforeRemovingThem) {
    if (!test::hasTerminals())
        GTEST_SKIP() << "no terminal can be opened";
    record();
    folder.write("data/Tidemark/notes.txt", "mine");
    const std::string before = remaining();
    const Outcome unasked =
        command({"erase"}, [] { ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO); });
    EXPECT_EQ(unasked.status, 1);
    EXPECT_TRUE(test::contains(unasked.err, "Nobody is there to ask"));

    const auto answering = [this](const char* answer) {
        const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        EXPECT_TRUE(::grantpt(terminal) == 0 && ::unlockpt(terminal) == 0);
        EXPECT_EQ(::write(terminal, answer, 2), 2);
        const std::string name = ::ptsname(terminal);
        const Outcome outcome = command(
            {"erase"}, [&] { ::dup2(::open(name.c_str(), O_RDWR | O_NOCTTY), STDIN_FILENO); });
        ::close(terminal);
        return outcome;
    };
    const Outcome refused = answering("n\n");
    EXPECT_EQ(refused.status, 0);
    for (const std::string& path :
         Words{"data/Tidemark/journal.json  ", "/config/Tidemark/settings.json",
               "stays there: 1 file.", "Remove it? [y/N]"})
        EXPECT_TRUE(test::contains(refused.err, path));
    EXPECT_EQ(remaining(), before);
    EXPECT_EQ(answering("y\n").status, 0);
    EXPECT_EQ(test::namesIn(folder / "data/Tidemark"), "notes.txt");
}
