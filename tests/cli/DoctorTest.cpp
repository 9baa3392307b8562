#include "core/base/JsonEncoder.h"
#include "core/journal/Journal.h"
#include "core/memory/MemoryArchive.h"
#include "tests/cli/RecorderProgram.h"
#include "tests/support/Observations.h"
#include "tests/support/SharedRecords.h"

#include <pwd.h>

using namespace tidemark;
using test::Words;

namespace {

/// Stands for everything private. It is in the path of the home folder as well.
const std::string secret = "zebra";

struct Doctor : test::RecorderProgram {
    Doctor() {
        const std::string root = (folder / secret).native();
        for (const char* name : {"data", "config", "run"})
            folder.makeFolder(secret + "/" + name);
        std::filesystem::permissions(folder / (secret + "/run"), std::filesystem::perms::owner_all);
        more = {"XDG_DATA_HOME=" + root + "/data", "XDG_CONFIG_HOME=" + root + "/config",
                "XDG_RUNTIME_DIR=" + root + "/run", "HOME=" + root, "USER=" + secret};
    }
    std::filesystem::path data() const { return folder / (secret + "/data/Tidemark"); }
    /// Records folders, snapshots and clips that must not be shown.
    void recordSecrets() {
        folder.makeFolder(secret + " folder/part");
        const std::string place = (folder / (secret + " folder")).native();
        for (const Words& words :
             {Words{"folders", "add", place},
              {"capture"},
              {"snapshot", "save", secret},
              {"settings", "set", "memoryExcludedApps", secret},
              {"settings", "set", "configurationHistoryPaths", place + "/part"}})
            ASSERT_EQ(command(words).status, 0) << words.front();
        MemoryArchive archive;
        auto clip =
            MemoryRecord::make(MemoryRecord::Kind::clipboard, Date::now(), secret, {}, secret);
        clip.text = secret;
        archive.records.emplace_back(std::move(clip));
        folder.write(secret + "/data/Tidemark/memory-history.json", json::encoded(archive));
    }
    /// Fails for each private word in `text`.
    static void expectNothingPrivate(const std::string& text) {
        EXPECT_FALSE(test::contains(text, secret)) << text;
        EXPECT_FALSE(test::contains(text, "/tmp/")) << text;
        std::array<char, 256> host{};
        ASSERT_EQ(::gethostname(host.data(), host.size() - 1), 0);
        for (const std::string name : {host.data(), ::getpwuid(::geteuid())->pw_name})
            for (const char* const before : {" ", "\"", "/"})
                for (const char* const after : {" ", "\"", "/", "\n", "."})
                    EXPECT_FALSE(test::contains(text, before + name + after)) << name << text;
    }
};

} // namespace

TEST_F(Doctor, ReportsWithoutPrivateDetails) {
    recordSecrets();
    // A capture can't measure this folder, because its name is not UTF-8.
    folder.write(secret + " folder/" + secret + "\xFF/file", "x");
    ASSERT_EQ(command({"capture"}).status, 0);
    const Words alone{"Measured sizes",
                      "Not read",
                      "Only a running recorder observes them.",
                      "No recorder runs",
                      "journal.json              mode 0600",
                      "version 1",
                      "networkHistoryEnabled",
                      "None was found."};
    const std::string text = command({"doctor"}).out;
    for (const auto& words : alone)
        EXPECT_TRUE(test::contains(text, words));
    expectNothingPrivate(text);

    start();
    ASSERT_TRUE(waitFor("Starting observation service"));
    const std::string live = command({"doctor"}).out;
    for (const std::string& words : Words{"Recent files  ", "Network  ", "Next capture"})
        EXPECT_TRUE(test::contains(live, words));
    expectNothingPrivate(live);
    const std::string json = command({"doctor", "--json"}).out;
    EXPECT_TRUE(test::contains(json, "\"running\":true"));
    expectNothingPrivate(json);
}

TEST_F(Doctor, ReportsWhatIsWrongWithDocumentsWithoutPrivateDetails) {
    recordSecrets();
    folder.write(secret + "/data/Tidemark/system-activity.json", "[{\"kind\":\"" + secret + "\"}]");
    std::filesystem::permissions(data() / "journal.json", std::filesystem::perms(0644));
    const auto expectProblems = [&](const Words& problems) {
        const std::string text = command({"doctor"}).out;
        for (const auto& problem : problems)
            EXPECT_TRUE(test::contains(text, problem));
        expectNothingPrivate(text);
    };
    // The keys of this document are paths, and an error in it names the key.
    folder.write(secret + "/data/Tidemark/storage-measurements.json", "{\"" + secret + "\":[]}");
    std::filesystem::create_symlink(secret, data() / "recorder-runs.json");
    expectProblems({"  system-activity.json could not be read: ",
                    "  storage-measurements.json could not be read: [\"[name]\"]: expected an "
                    "object, found an array.",
                    "  recorder-runs.json could not be read: No such file or directory.",
                    "Others can reach this: journal.json, mode 0644."});
    // The clock was ahead once; one capture has been taken since.
    Journal journal;
    Snapshot ahead = test::snapshot(1);
    ahead.timestamp = Date{4e9};
    journal.snapshots = test::shared(std::move(ahead), test::snapshot(2));
    folder.write(secret + "/data/Tidemark/journal.json", json::encoded(journal));
    expectProblems({"The clock was set back: there are captures dated up to "});
    folder.write(secret + "/data/Tidemark/journal.json", "{\"schemaVersion\":9,\"snapshots\":[],"
                                                         "\"events\":[],\"baselines\":[]}");
    expectProblems({"journal.json is of version 9, which this release can't read."});
    start();
    ASSERT_TRUE(waitFor("Observation startup failed"));
    expectProblems({"journal.json is of version 9, which this release can't read."});
}
