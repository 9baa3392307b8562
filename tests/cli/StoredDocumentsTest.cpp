#include "core/journal/JournalStore.h"
#include "core/memory/MemoryHistoryStore.h"
#include "tests/cli/RecorderProgram.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>

using namespace tidemark;
using test::Outcome;
using test::Words;

namespace {

struct StoredDocuments : test::RecorderProgram {
    std::filesystem::path data = folder.makeFolder("data/Tidemark");
    std::filesystem::path settings = folder.makeFolder("config/Tidemark") / "settings.json";

    /// Puts the documents of a release in the place of those that the program has kept.
    void install(const std::filesystem::path& release) const {
        std::filesystem::remove_all(data);
        std::filesystem::copy(release, data,
                              std::filesystem::copy_options::recursive
                                  | std::filesystem::copy_options::overwrite_existing);
        std::filesystem::rename(data / "settings.json", settings);
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path()))
            std::filesystem::permissions(
                entry.path(), std::filesystem::perms(entry.is_directory() ? 0700 : 0600));
    }
    /// The output of a shell script, which can start the program as `tidemark`.
    std::string outputOf(const std::string& script) const {
        std::filesystem::create_directories(folder / "bin");
        if (!std::filesystem::exists(folder / "bin/tidemark"))
            std::filesystem::create_symlink(TIDEMARK_PROGRAM, folder / "bin/tidemark");
        std::string line = "env LC_ALL=C.UTF-8 PATH=\"" + (folder / "bin").native() + ":$PATH\"";
        for (const auto& variable : environment())
            line += " '" + variable + "'";
        line += " sh " + folder.write("script", script).native();
        const std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(line.c_str(), "r"), ::pclose);
        std::string text;
        std::array<char, 4096> block{};
        while (const auto count = std::fread(block.data(), 1, block.size(), pipe.get()))
            text.append(block.data(), count);
        return text;
    }
    static std::vector<std::filesystem::path> releases() {
        std::vector<std::filesystem::path> found;
        for (const auto& entry : std::filesystem::directory_iterator(TIDEMARK_FIXTURES "/stored"))
            if (entry.is_directory())
                found.push_back(entry.path());
        std::ranges::sort(found);
        return found;
    }
};

} // namespace

TEST_F(StoredDocuments, OfEveryReleaseAreReadAndContinued) {
    ASSERT_FALSE(releases().empty());
    for (const auto& release : releases()) {
        SCOPED_TRACE(release);
        install(release);
        const std::string documents = command({"doctor", "--json"}).out;
        EXPECT_TRUE(test::contains(documents, R"("name":"recorder-runs.json")"));
        EXPECT_FALSE(test::contains(documents, R"("problem":)")) << documents;
        const std::string timeline = command({"timeline", "--ids"}).out;
        for (const char* event :
             {"Sextant Installed", "Lantern Updated", "Lantern Removed", "New Background Item",
              "Stuff Grew in Size", "+5.37 GB", "Woke Up", "Headset Connected"})
            EXPECT_TRUE(test::contains(timeline, event));
        EXPECT_TRUE(test::contains(command({"snapshot", "list"}).out, "Before the holiday"));
        EXPECT_TRUE(command({"settings", "get", "listingTextSize"}).out.starts_with("15\n"));
        // Commands show no clips that are older than some days.
        const auto memory = MemoryHistoryStore(data / "memory-history.json").load();
        EXPECT_TRUE(std::ranges::any_of(memory.records, [](const auto& record) {
            return record->text == "Meet at the harbour";
        }));
        EXPECT_TRUE(std::ranges::any_of(
            memory.records, [](const auto& record) { return record->appName == "Sextant"; }));

        EXPECT_EQ(command({"capture"}).status, 0);
        const std::string later = command({"timeline", "--ids"}).out;
        std::istringstream lines(timeline);
        for (std::string line; std::getline(lines, line);)
            EXPECT_TRUE(test::contains(later, line + "\n"));
    }
}

TEST_F(StoredDocuments, OfALaterReleaseAreRefusedAndLeftAlone) {
    install(releases().front());
    const std::tuple<std::filesystem::path, std::string> cases[] = {
        {data / "journal.json", R"({"schemaVersion":9,"days":[]})"},
        {data / "journal.json", R"({"schemaVersion":9,"snapshots":[],"events":[],"baselines":[]})"},
        {data / "system-activity.json", R"({"schemaVersion":9,"records":[]})"},
        {data / "memory-history.json", R"({"version":9,"items":[]})"},
        {data / "storage-measurements.json", R"({"schemaVersion":9,"items":[]})"},
        {data / "storage-history.json", R"({"schemaVersion":9,"days":[]})"},
        {data / "recorder-runs.json", R"({"schemaVersion":9,"runs":[]})"},
        {settings, R"({"schemaVersion":9,"recordingMode":{"on":true}})"},
    };
    for (const auto& [document, later] : cases) {
        const std::string before = test::contents(document);
        folder.write(document.lexically_relative(folder.path()).native(), later);
        std::filesystem::permissions(document, std::filesystem::perms(0600));
        const std::string name = document.filename().native();
        EXPECT_TRUE(test::contains(command({"doctor"}).out,
                                   name + " is of version 9, which this release can't read."));
        start();
        EXPECT_TRUE(waitFor("Starting observation service"));
        command({"capture"});
        command({"settings", "set", "listingTextSize", "20"});
        EXPECT_EQ(stop(SIGTERM), 0);
        EXPECT_EQ(test::contents(document), later) << name;
        folder.write(document.lexically_relative(folder.path()).native(), before);
    }
}

TEST_F(StoredDocuments, AreReadByTheExamplesOfTheDocumentation) {
    if (std::system("command -v jq >/dev/null") != 0)
        GTEST_SKIP() << "jq is needed";
    install(releases().front());
    const std::string page = test::contents(TIDEMARK_SAMPLES "/../users/data.md");
    constexpr std::string_view begin = "```sh\n";
    Words outputs;
    for (auto place = page.find(begin); place != page.npos; place = page.find(begin, place)) {
        place += begin.size();
        outputs.push_back(outputOf(page.substr(place, page.find("```", place) - place)));
    }
    ASSERT_EQ(outputs.size(), 3U);
    EXPECT_TRUE(test::contains(outputs[0], "Z  Stuff Grew in Size  +5.37 GB · part +5.37 GB\n"));
    EXPECT_EQ(outputs[1], "\"Lantern\",\"1.0\",\"1.1\"\n");
    const auto snapshots = JournalStore(data / "journal.json").load().snapshots;
    EXPECT_EQ(std::ranges::count(outputs[2], '\n'), std::ssize(snapshots));
    EXPECT_TRUE(test::contains(outputs[2],
                               "\t" + std::to_string(snapshots.back()->freeBytes.value()) + "\n"));
}
