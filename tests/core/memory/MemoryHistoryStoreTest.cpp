#include "core/memory/MemoryHistoryStore.h"

#include "core/base/Files.h"
#include "tests/support/Failure.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ResourceLimit.h"
#include "tests/support/TemporaryFolder.h"

#include <csignal>
#include <fstream>
#include <functional>
#include <map>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

using namespace tidemark;
namespace fs = std::filesystem;
using Kind = MemoryRecord::Kind;

namespace {

MemoryRecord storedClip(const std::string& id, std::optional<std::string> payload,
                        std::optional<std::string> text) {
    MemoryRecord record;
    record.id = id;
    record.kind = Kind::clipboard;
    record.title = "Clip " + id;
    if (payload)
        record.payload = Data{*std::move(payload)};
    record.text = std::move(text);
    return record;
}

MemoryRecord application(const std::string& id, std::string title = "Editor Launched") {
    return MemoryRecord::make(Kind::appLaunched, Date{0.1 + 0.2}, std::move(title), "/" + id);
}

MemoryArchive storedArchive(std::vector<MemoryRecord> records) {
    MemoryArchive archive;
    for (auto& record : records)
        archive.records.emplace_back(std::move(record));
    archive.fileHistoryStarted = true;
    return archive;
}

/// The archive as `load` returns it, with the flags of stored contents.
MemoryArchive loaded(MemoryArchive archive) {
    for (auto& shared : archive.records) {
        MemoryRecord record = *shared;
        if (record.kind == Kind::clipboard && record.payload)
            record.payloadStored = true;
        if (record.kind == Kind::clipboard && record.text)
            record.textStored = true;
        shared.emplace(std::move(record));
    }
    return archive;
}

std::string dataFile(std::string_view id) {
    return MemoryHistoryStore::blobName(id, ".data");
}
std::string textFile(std::string_view id) {
    return MemoryHistoryStore::blobName(id, ".text");
}

struct Place {
    test::TemporaryFolder folder;
    fs::path url = folder / "data/memory-history.json";
    fs::path payloads = folder / "data/memory-payloads";
    MemoryHistoryStore store{url};

    void save(const MemoryArchive& archive) {
        store.load();
        store.save(archive);
    }
    MemoryArchive reloaded() const { return MemoryHistoryStore(url).load(); }
    std::string failure() {
        return test::failureOf([&] { store.load(); });
    }
    /// Every entry below the folder, with the content of the small files.
    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> all;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path()))
            all[entry.path().native()] = entry.is_regular_file() && entry.file_size() < 1'000'000
                                             ? test::contents(entry)
                                             : "";
        return all;
    }
};

const MemoryArchive sample = storedArchive(
    {storedClip("both", std::string("\x89PNG\0\r\n\xFF", 8), "é line\n"),
     storedClip("text", {}, "words"), storedClip("empty", "", ""), application("editor")});

} // namespace

TEST(MemoryHistoryStore, KeepsClipsInPrivateFilesBesideTheDocument) {
    Place place;
    place.folder.makeFolder("data/memory-payloads");
    fs::permissions(place.folder / "data", fs::perms(0755));
    fs::permissions(place.payloads, fs::perms(0777));
    place.save(sample);

    EXPECT_EQ(test::modeOf(place.folder / "data"), 0700U);
    EXPECT_EQ(test::modeOf(place.payloads), 0700U);
    EXPECT_EQ(test::namesIn(place.folder / "data"), "memory-history.json memory-payloads");
    EXPECT_EQ(test::modeOf(place.url), 0600U);
    for (const auto& name : {dataFile("both"), textFile("both"), textFile("text")})
        EXPECT_EQ(test::modeOf(place.payloads / name), 0600U);
    EXPECT_EQ(test::contents(place.payloads / dataFile("both")), sample.records[0]->payload->bytes);
    EXPECT_EQ(test::contents(place.payloads / textFile("both")), "é line\n");
    // printf 'both' | sha256sum
    EXPECT_EQ(dataFile("both"),
              "ff7772053abf7d817d6eec229a09e14f0d1552f1cb0aeedb2ac73784ac2d2e39.data");

    const std::string clips =
        R"({"version":1,"records":[)"
        R"({"id":"both","kind":"clipboard","timestamp":0,"title":"Clip both","payloadStored":true,)"
        R"("textStored":true,"pinned":false,"observedAt":0},)"
        R"({"id":"text","kind":"clipboard","timestamp":0,"title":"Clip text","textStored":true,)"
        R"("pinned":false,"observedAt":0},)";
    EXPECT_TRUE(test::contents(place.url).starts_with(clips)) << test::contents(place.url);
}

TEST(MemoryHistoryStore, WritesTheContentOfAClipOnce) {
    Place place;
    place.save(sample);
    const auto past = fs::last_write_time(place.url) - std::chrono::hours(1);
    const std::vector<fs::path> contents{place.payloads / dataFile("both"),
                                         place.payloads / textFile("both"), place.url};
    for (const auto& file : contents)
        fs::last_write_time(file, past);
    place.store.save(sample);
    place.store.load();
    place.store.save(sample);
    EXPECT_EQ(fs::last_write_time(contents[0]), past);
    EXPECT_EQ(fs::last_write_time(contents[1]), past);
    EXPECT_NE(fs::last_write_time(contents[2]), past);

    fs::remove(place.payloads / dataFile("both"));
    place.store.save(sample);
    EXPECT_EQ(place.reloaded(), loaded(sample)) << "a file that was lost is written again";
}

TEST(MemoryHistoryStore, DeletesTheContentsThatNoClipNeeds) {
    Place place;
    place.save(sample);
    place.folder.write("data/memory-payloads/stray", "x");
    place.folder.write("data/memory-payloads/.half.data.new-1", "x");
    place.folder.write("data/memory-payloads/folder/theirs", "x");
    fs::create_symlink(place.folder.write("elsewhere", "x"), place.payloads / "link");
    const auto fewer = storedArchive({*sample.records[1], *sample.records[3]});
    place.store.save(fewer);
    EXPECT_EQ(test::namesIn(place.payloads), textFile("text") + " folder");
    EXPECT_EQ(test::namesIn(place.payloads / "folder"), "theirs");
    EXPECT_TRUE(fs::exists(place.folder / "elsewhere"));
    EXPECT_EQ(place.reloaded(), loaded(fewer));
}

TEST(MemoryHistoryStore, DeletesNothingThroughALink) {
    Place place;
    place.folder.write("documents/letter", "Dear");
    place.folder.makeFolder("data");
    fs::create_directory_symlink(place.folder / "documents", place.payloads);
    EXPECT_THROW(place.save(sample), FileError);
    EXPECT_EQ(test::namesIn(place.folder / "documents"), "letter");
    EXPECT_FALSE(fs::exists(place.url));
}

TEST(MemoryHistoryStore, ReadsNothingThroughALink) {
    Place place;
    place.save(sample);
    fs::rename(place.payloads, place.folder / "elsewhere");
    fs::create_directory_symlink(place.folder / "elsewhere", place.payloads);
    EXPECT_EQ(place.failure(), place.payloads.native() + " could not be opened: Not a directory.")
        << "the archive could not be saved either";
}

TEST(MemoryHistoryStore, WritesOnlyPayloadsOfClipsToFiles) {
    Place place;
    auto odd = application("editor");
    odd.text = "kept";
    odd.payload = Data{"bytes"};
    odd.payloadStored = true;
    odd.textStored = false;
    auto lost = storedClip("lost", {}, {});
    lost.payloadStored = true;
    auto damaged = storedClip("damaged", {}, "\xFF");
    place.save(storedArchive({odd, lost, damaged}));
    EXPECT_EQ(test::namesIn(place.payloads), textFile("damaged"));

    odd.payloadStored.reset();
    odd.textStored.reset();
    lost.payloadStored.reset();
    damaged.text = "\uFFFDFF";
    EXPECT_EQ(place.reloaded(), loaded(storedArchive({odd, lost, damaged})))
        << "the document names no missing file";
}

TEST(MemoryHistoryStore, LeavesAnUnreadableArchiveUnchanged) {
    const auto bytes = [](const std::string& content) {
        return [content](const fs::path& path) { std::ofstream(path) << content; };
    };
    const std::string document = "memory-history.json";
    const std::string data = "memory-payloads/" + dataFile("both");
    const std::string text = "memory-payloads/" + textFile("both");
    const struct {
        std::string file;
        /// Creates something else at the path, or nothing.
        std::function<void(const fs::path&)> put;
        std::string expected;
    } cases[] = {
        {document, bytes(R"({"version":2,"records":[],"fileHistoryStarted":true,"more":{}})"),
         "is of version 2, which this release can't read."},
        {document, bytes(R"({"version":1,"records":[)"),
         "could not be read: records: not valid JSON at byte 25."},
        {text, [](const fs::path&) {}, "could not be read: No such file or directory."},
        {text, bytes("\xC3"), "could not be read: it is no UTF-8 text."},
        {data, [](const fs::path& path) { fs::create_directory(path); },
         "could not be read: Is a directory."},
        {data, [](const fs::path& path) { ::mkfifo(path.c_str(), 0600); },
         "is not a regular file."},
        {data, [](const fs::path& path) { fs::create_symlink("/etc/hostname", path); },
         "could not be read: Too many levels of symbolic links."},
        {data,
         [&](const fs::path& path) {
             bytes("")(path);
             fs::resize_file(path, 1L << 40);
         },
         "could not be read: File too large."},
    };
    for (const auto& [file, put, expected] : cases) {
        Place place;
        place.save(sample);
        const fs::path path = place.folder / ("data/" + file);
        fs::remove(path);
        put(path);
        EXPECT_EQ(place.failure(), path.native() + " " + expected);
        const auto before = place.files();
        try {
            place.store.save(sample);
            ADD_FAILURE() << expected;
        } catch (const MemoryHistoryStore::StoreError& error) {
            EXPECT_EQ(error.kind(), MemoryHistoryStore::StoreError::Kind::notReadable);
        }
        EXPECT_EQ(place.files(), before) << expected;
    }
}

TEST(MemoryHistoryStore, DistinguishesMissingPermissionFromAMissingFile) {
    Place place;
    place.save(sample);
    fs::permissions(place.folder / "data", fs::perms(0755));
    {
        const test::OrdinaryUser user(place.folder.path());
        EXPECT_EQ(place.failure(), place.url.native() + " could not be read: Permission denied.");
        EXPECT_THROW(place.store.save(sample), MemoryHistoryStore::StoreError);
    }
    fs::permissions(place.url, fs::perms(0644));
    {
        const test::OrdinaryUser user(place.folder.path());
        EXPECT_EQ(place.failure(),
                  place.payloads.native() + " could not be opened: Permission denied.");
    }
    fs::permissions(place.folder / "data", fs::perms(0));
    const test::OrdinaryUser user(place.folder.path());
    EXPECT_EQ(place.failure(), place.url.native() + " could not be inspected: Permission denied.");
    EXPECT_THROW(place.store.save(sample), MemoryHistoryStore::StoreError);
}

TEST(MemoryHistoryStore, KeepsTheOldArchiveWhenTheDiskIsFull) {
    const std::string large(1 << 20, 'x');
    const std::pair<MemoryArchive, bool> cases[] = {
        {storedArchive({storedClip("new", large, {})}), false},
        {storedArchive({storedClip("new", "small", {}), application("a", large)}), true},
    };
    for (const auto& [next, keepsNewContents] : cases) {
        Place place;
        place.save(sample);
        {
            const test::ResourceLimit disk(RLIMIT_FSIZE, 1 << 16);
            EXPECT_THROW(place.store.save(next), FileError);
        }
        EXPECT_EQ(place.reloaded(), loaded(sample))
            << "old contents are deleted after the document is written";
        EXPECT_EQ(fs::exists(place.payloads / dataFile("new")), keepsNewContents)
            << "new contents come first";
        place.store.save(next);
        EXPECT_EQ(place.reloaded(), loaded(next));
        EXPECT_EQ(test::namesIn(place.payloads), dataFile("new"));
    }
}

TEST(MemoryHistoryStore, SurvivesBeingKilledInTheMiddleOfASave) {
    Place place;
    std::vector<MemoryArchive> versions;
    for (const std::string name : {"A", "B"}) {
        std::vector<MemoryRecord> records;
        for (int i = 0; i < 20; ++i)
            records.push_back(
                storedClip(name + std::to_string(i), std::string(20'000, name[0]), name));
        records.push_back(application(name, std::string(300'000, name[0])));
        versions.push_back(storedArchive(std::move(records)));
    }
    place.save(versions[0]);
    for (int round = 0; round < 16; ++round) {
        const std::string before = test::namesIn(place.payloads);
        const pid_t child = ::fork();
        if (child == 0)
            for (std::size_t i = 1;; ++i)
                place.store.save(versions[i % 2]);
        while (test::namesIn(place.payloads) == before)
            ::sched_yield();
        // Each round kills a little later in the save.
        for (int look = 0; look < 50 * round; ++look)
            test::namesIn(place.payloads);
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const MemoryArchive read = place.store.load();
        ASSERT_TRUE(read == loaded(versions[0]) || read == loaded(versions[1]));
        place.store.save(read);
        ASSERT_EQ(std::distance(fs::directory_iterator(place.payloads), {}), 40);
        ASSERT_EQ(test::namesIn(place.folder / "data"), "memory-history.json memory-payloads");
    }
}
