#include "platform/linux/FileFinder.h"

#include "core/base/Error.h"
#include "core/base/Iso8601.h"
#include "platform/linux/FolderFileIndex.h"
#include "platform/linux/RecentlyUsedList.h"
#include "tests/app/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <fstream>
#include <mutex>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace tidemark;
namespace fs = std::filesystem;

namespace {

/// An entry of the list of recently used files, for a file that was used `age` seconds ago.
std::string bookmark(const std::string& url, double age, const std::string& more = "") {
    const auto date = iso8601Text(Date::now() + -age).value();
    return "<bookmark href=\"" + url + "\" added=\"" + date + "\" modified=\"" + date
           + "\" visited=\"1990-01-01T00:00:00Z\">" + more + "</bookmark>";
}

std::string listOf(const std::string& bookmarks) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<xbel version="1.0" xmlns:bookmark="http://www.freedesktop.org/standards/desktop-bookmarks"
      xmlns:mime="http://www.freedesktop.org/standards/shared-mime-info">)"
           + bookmarks + "</xbel>";
}

/// A finder with short delays on a thread of its own, and what it has reported.
struct FileFinderTest : testing::Test {
    ~FileFinderTest() override { stop(); }

    void start(Date since = Date::now() + -60.0) {
        setup.scope.since = since;
        thread = std::jthread([this](const std::stop_token& token) {
            FileFinder(std::move(setup))
                .run([this](FileIndex::Matches matches) { take(std::move(matches)); }, token);
        });
    }
    void stop() {
        release();
        thread = {};
    }
    void take(FileIndex::Matches matches) {
        std::unique_lock lock(mutex);
        reports.push_back(std::move(matches));
        arrived.notify_all();
        arrived.wait(lock, [&] { return !isHeld; });
    }
    void hold() {
        const std::lock_guard lock(mutex);
        isHeld = true;
    }
    void release() {
        const std::lock_guard lock(mutex);
        isHeld = false;
        arrived.notify_all();
    }
    FileIndex::Matches next() {
        std::unique_lock lock(mutex);
        if (!arrived.wait_for(lock, std::chrono::minutes(1), [&] { return !reports.empty(); }))
            throw std::runtime_error("nothing was reported");
        auto first = std::move(reports.front());
        reports.pop_front();
        return first;
    }
    /// The names of the files in one report, sorted.
    static std::string names(const FileIndex::Matches& matches) {
        std::vector<std::string> all;
        for (const auto& file : matches.files)
            all.push_back(fs::path(file.path).filename());
        std::ranges::sort(all);
        std::string text;
        for (const auto& name : all)
            text += name + " ";
        return text;
    }
    /// Waits until a file is reported; the reports before it may have others.
    IndexedFileObservation nextOf(const std::string& name) {
        for (;;)
            for (const auto& file : next().files)
                if (fs::path(file.path).filename() == name)
                    return file;
    }

    const test::TemporaryFolder home;
    const fs::path documents = home.makeFolder("Documents");
    const fs::path data = home.makeFolder("data");
    FileFinder::Setup setup{.scope = {},
                            .folders = {documents},
                            .recentlyUsed = data / "recently-used.xbel",
                            .downloads = home / "Documents/Downloads",
                            .origins = {{}, [] { return false; }},
                            .delays = {.batch = 0.005, .rewalk = 0.005, .rest = 0.005}};
    std::mutex mutex;
    std::condition_variable arrived;
    std::deque<FileIndex::Matches> reports;
    bool isHeld = false;
    std::jthread thread;
};

} // namespace

TEST(RecentlyUsedList, HasTheFilesOfThisMachine) {
    const auto pathsOf = [](const std::string& text) {
        std::string all;
        for (const auto& entry : recentlyUsedList::parse(text))
            all += entry.path + " ";
        return all;
    };
    const std::string date = R"( modified="2024-05-01T12:00:00.123456Z")";
    const std::string later = R"( modified="2024-05-01T14:00:01+02:00")";
    const std::pair<std::string, std::string> cases[] = {
        {listOf("<bookmark href=\"file:///a%20b%C3%A9\"" + date
                + "/><bookmark href=\"file://localhost/c\"" + later + "/>"),
         "/c /a bé "},
        {listOf("<folder><bookmark href=\"file:///a\"" + date + "/></folder>"), "/a "},
        {listOf("<bookmark href=\"file:///a\"" + date
                + "><info><metadata><bookmark:private/></metadata></info></bookmark>"),
         ""},
        {listOf("<bookmark href=\"sftp://host/a\"" + date + "/><bookmark href=\"file://host/a\""
                + date + "/><bookmark href=\"file:a\"" + date
                + "/><bookmark href=\"file:///a/../b\"" + date
                + "/><bookmark href=\"file:///a%00b\"" + date + "/><bookmark href=\"file:///a/\""
                + date + "/><bookmark" + date + "/><bookmark href=\"file:///a\"/>"
                + "<bookmark href=\"file:///a\" modified=\"yesterday\"/>"),
         ""},
        // In a damaged list, what stands before the damage is read.
        {listOf("<bookmark href=\"file:///a\"" + date + "/><bookmark href=\"file:///b\"" + date
                + "><info>"),
         "/a "},
        {listOf("<bookmark href=\"file:///a\"" + date + "/>&undefined;"), "/a "},
        {"<!DOCTYPE x [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">"
         "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;\">]>"
         "<xbel>&d;<bookmark href=\"file:///a\""
             + date + "/></xbel>",
         ""},
        {std::string("\0\xFF<xbel>", 8), ""},
        {"", ""},
    };
    for (const auto& [text, paths] : cases)
        EXPECT_EQ(pathsOf(text), paths) << text;

    std::string many;
    for (int i = 0; i < 2'100; ++i)
        many += bookmark("file:///" + std::to_string(i), i);
    const auto entries = recentlyUsedList::parse(listOf(many));
    EXPECT_EQ(entries.size(), recentlyUsedList::mostEntries);
    EXPECT_EQ(entries.front().path, "/0");

    // Any part of a list, and any damaged byte in it, is read without a crash.
    const std::string list = cases[0].first + cases[2].first;
    for (std::size_t i = 0; i < list.size(); ++i) {
        recentlyUsedList::parse(list.substr(0, i));
        for (const char damage : {'\0', '<', '&', '\xFF'}) {
            std::string damaged = list;
            damaged[i] = damage;
            recentlyUsedList::parse(damaged);
        }
    }
}

TEST_F(FileFinderTest, FindsDocumentsAndRecentlyUsedFiles) {
    home.write("Documents/a.txt", "abc");
    home.write("Documents/deep/b.txt", "");
    home.write("Documents/old.txt", "");
    fs::last_write_time(documents / "old.txt",
                        fs::file_time_type::clock::now() - std::chrono::hours(24 * 40));
    for (const char* name : {".hidden/c", "node_modules/c", "c.part", "c.crdownload", "c~"})
        home.write(std::string("Documents/") + name, "");
    fs::create_symlink(home.path(), documents / "link");
    home.write("elsewhere/d.txt", "");
    home.write("data/recently-used.xbel",
               listOf(bookmark("file://" + (home / "elsewhere/d.txt").native(), 10)
                      + bookmark("file://" + (documents / "a.txt").native(), 5)
                      + bookmark("file://" + (home / "gone.txt").native(), 5)));
    start();
    const auto matches = next();
    EXPECT_EQ(names(matches), "a.txt b.txt d.txt old.txt ") << "old.txt was created just now";
    EXPECT_TRUE(matches.isLive);
    const auto& a = *std::ranges::find(matches.files, (documents / "a.txt").native(),
                                       &IndexedFileObservation::path);
    EXPECT_EQ(a.bytes, 3);
    EXPECT_NEAR(Date::now() - a.used.value(), 5, 5);
    EXPECT_LE(Date::now() - a.created.value(), 60);
    EXPECT_FALSE(a.modified.has_value()) << "no more than that it was created";
    const auto& old = *std::ranges::find(matches.files, (documents / "old.txt").native(),
                                         &IndexedFileObservation::path);
    EXPECT_GT(Date::now() - old.modified.value(), 86'400);
    stop();
    reports.clear();

    // When the user chose folders, only files in these are reported.
    setup.scope.folders.emplace();
    setup.folders = {documents / "deep", home / "missing"};
    setup.recentlyUsed = data / "recently-used.xbel";
    setup.delays.rewalk = 1000;
    start();
    EXPECT_EQ(names(next()), "b.txt ");
}

TEST_F(FileFinderTest, FollowsChanges) {
    home.write("elsewhere/moved.txt", "");
    home.write("elsewhere/folder/inside.txt", "");
    start();
    EXPECT_EQ(names(next()), "");
    home.write("Documents/a.txt", "abc");
    EXPECT_EQ(nextOf("a.txt").bytes, 3);
    // A browser finishes a download by a rename.
    home.write("Documents/b.iso.part", "abcd");
    fs::rename(documents / "b.iso.part", documents / "b.iso");
    const auto download = nextOf("b.iso");
    EXPECT_EQ(download.added, download.created);
    fs::rename(home / "elsewhere/moved.txt", documents / "moved.txt");
    const auto moved = nextOf("moved.txt");
    EXPECT_GT(moved.added, moved.created) << "it arrived later than it was created";

    home.write("Documents/new/deeper/c.txt", "");
    nextOf("c.txt");
    home.write("Documents/new/deeper/d.txt", "");
    nextOf("d.txt");
    fs::rename(home / "elsewhere/folder", documents / "folder");
    nextOf("inside.txt");
    fs::rename(documents / "folder", documents / "renamed");
    nextOf("inside.txt");
    home.write("Documents/renamed/e.txt", "");
    EXPECT_EQ(nextOf("e.txt").path, (documents / "renamed/e.txt").native());

    // Many programs save a file by a rename.
    home.write("Documents/.a.new", "abcd");
    fs::last_write_time(documents / ".a.new",
                        fs::file_time_type::clock::now() - std::chrono::seconds(5));
    fs::rename(documents / ".a.new", documents / "a.txt");
    const auto saved = nextOf("a.txt");
    EXPECT_EQ(saved.created, std::nullopt) << "it was replaced";
    EXPECT_TRUE(saved.modified.has_value());

    // Programs replace the list by a rename.
    home.write("data/recently-used.xbel.new",
               listOf(bookmark("file://" + (documents / "a.txt").native(), 0)));
    fs::rename(data / "recently-used.xbel.new", data / "recently-used.xbel");
    EXPECT_TRUE(nextOf("a.txt").used.has_value());
}

TEST_F(FileFinderTest, SurvivesTheRemovalOfItsFolders) {
    home.write("Documents/a/b/c.txt", "");
    start();
    EXPECT_EQ(names(next()), "c.txt ");
    fs::remove_all(documents);
    fs::create_directories(documents / "a");
    home.write("Documents/a/d.txt", "");
    nextOf("d.txt");
    fs::rename(documents, home / "Old");
    home.write("Documents/e.txt", "");
    EXPECT_EQ(nextOf("e.txt").path, (documents / "e.txt").native());
}

TEST_F(FileFinderTest, WalksAgainWhereItCannotWatch) {
    setup.mostWatches = 2;
    home.write("Documents/near/a.txt", "");
    home.write("Documents/near/far/b.txt", "");
    start();
    const auto matches = next();
    EXPECT_EQ(names(matches), "a.txt b.txt ");
    EXPECT_FALSE(matches.isLive);
    home.write("Documents/near/far/c.txt", "");
    nextOf("c.txt");
}

TEST_F(FileFinderTest, KnowsWhenTheLastOfManyFilesArrived) {
    const auto name = [](int number) { return "moved" + std::to_string(number) + ".txt"; };
    constexpr int last = 2'100;
    for (int i = 0; i <= last; ++i)
        home.write("elsewhere/" + name(i), "");
    start();
    EXPECT_EQ(names(next()), "");
    for (int i = 0; i <= last; ++i)
        fs::rename(home / "elsewhere" / name(i), documents / name(i));
    const auto moved = nextOf(name(last));
    EXPECT_GT(moved.added, moved.created);
}

TEST(FolderWatch, AtItsLimitAcceptsAFolderThatIsAlreadyWatched) {
    const test::TemporaryFolder folder;
    folder.makeFolder("a");
    folder.makeFolder("b");
    FolderWatch watch(1);
    EXPECT_TRUE(watch.add(folder / "a"));
    EXPECT_FALSE(watch.add(folder / "b"));
    EXPECT_TRUE(watch.add(folder / "a"));
    folder.write("b/unwatched", "");
    folder.write("a/file", "");
    const auto events = watch.read().events;
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].path, folder / "a/file");
}

TEST(FolderWatch, ReportsThatTheSystemAllowsNoFurtherFolder) {
    const test::TemporaryFolder folder;
    for (const char* name : {"a", "b", "c"})
        folder.makeFolder(name);
    constexpr int notPossible = 77;
    // The limit is that of a user namespace, which only a process of one thread may create.
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const bool isLimited =
            ::unshare(CLONE_NEWUSER) == 0
            && (std::ofstream("/proc/sys/user/max_inotify_watches") << 2).flush();
        if (!isLimited)
            ::_exit(notPossible);
        FolderWatch watch(100);
        const bool isAsExpected =
            watch.add(folder / "a") && watch.add(folder / "b") && !watch.add(folder / "c");
        ::_exit(isAsExpected ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    if (WEXITSTATUS(status) == notPossible)
        GTEST_SKIP() << "the limit can't be changed here";
    EXPECT_EQ(status, 0);
}

TEST_F(FileFinderTest, WalksAgainAfterAFlood) {
    start();
    hold();
    home.write("Documents/first.txt", "");
    next();
    std::size_t limit = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
    if (limit > 100'000)
        GTEST_SKIP() << "the queue of events is too long to fill here";
    for (std::size_t i = 0; i <= limit / 2; ++i)
        for (const char* name : {"Documents/one", "Documents/two"})
            // The files are opened and closed without writing, because some file systems flush each
            // write to the disk.
            ::close(::open((home / name).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    home.write("Documents/flood/last.txt", "");
    release();
    nextOf("last.txt");
}

TEST_F(FileFinderTest, StopsWhileItWalks) {
    for (int i = 0; i < 200; ++i)
        home.write("Documents/" + std::to_string(i), "");
    thread = std::jthread([this](const std::stop_token&) {
        std::stop_source source;
        source.request_stop();
        FileFinder(std::move(setup))
            .run([this](FileIndex::Matches matches) { take(std::move(matches)); },
                 source.get_token());
    });
    thread.join();
    EXPECT_TRUE(reports.empty());
}

TEST(DownloadOrigins, AreInAttributesOrInTheMetadataOfTheDesktop) {
    const test::TemporaryFolder folder;
    const auto file = folder.write("a.iso", "");
    EXPECT_TRUE(DownloadOrigins::inAttributes(file).empty());
    const std::string url = "https://example.org/a.iso";
    if (::setxattr(file.c_str(), "user.xdg.origin.url", url.data(), url.size(), 0) == 0) {
        EXPECT_EQ(DownloadOrigins::inAttributes(file), std::vector{url});
    }

    const auto program = [&](const std::string& body) {
        const auto path = folder.write("gio", "#!/bin/sh\n" + body);
        ::chmod(path.c_str(), 0755);
        return path;
    };
    const auto answer = [&](DownloadOrigins& origins) {
        const auto found = origins.inDesktopMetadata(file);
        return found.empty() ? "" : found[0];
    };
    bool isThere = false;
    DownloadOrigins origins(
        program("echo attributes:; echo \"  metadata::download-uri: https://$4\""),
        [&] { return isThere; });
    EXPECT_EQ(answer(origins), "") << "it would start a service";
    isThere = true;
    EXPECT_EQ(answer(origins), "https://" + file.native());
    program("exit 1");
    for (int i = 0; i < DownloadOrigins::mostFailures; ++i)
        EXPECT_EQ(answer(origins), "");
    program("echo metadata::download-uri: https://late");
    EXPECT_EQ(answer(origins), "") << "not run again after so many failures";

    DownloadOrigins none({}, [] { return true; });
    EXPECT_EQ(answer(none), "");
}

TEST(FolderFileIndex, ReportsThatItHasStopped) {
    FolderFileIndex index(
        {.places = []() -> FolderFileIndex::Places { throw Error("There are no places."); },
         .bus = [] { return MessageBus(QDBusConnection(QStringLiteral("none"))); }});
    std::optional<bool> hasStopped;
    ASSERT_TRUE(
        index.start({.since = Date::now(), .folders = {}},
                    [&](const FileIndex::Matches& matches) { hasStopped = matches.hasStopped; }));
    test::until([&] { return hasStopped.has_value(); });
    EXPECT_EQ(hasStopped, true);
}

TEST(FolderFileIndex, ReportsToTheEventLoopUntilStopped) {
    const test::TemporaryFolder home;
    home.write("Documents/a.txt", "");
    FolderFileIndex index(
        {.places =
             [&] {
                 return FolderFileIndex::Places{.documents = {home / "Documents"},
                                                .downloads = home / "Downloads",
                                                .recentlyUsed = home / "list"};
             },
         .bus = [] { return MessageBus(QDBusConnection(QStringLiteral("none"))); },
         .delays = {.batch = 0.005}});
    const auto main = std::this_thread::get_id();
    std::vector<std::string> paths;
    const auto found = [&](const FileIndex::Matches& matches) {
        EXPECT_EQ(std::this_thread::get_id(), main);
        for (const auto& file : matches.files)
            paths.push_back(file.path);
    };
    const FileIndex::Scope scope{.since = Date::now() + -60.0, .folders = {}};
    ASSERT_TRUE(index.start(scope, found));
    test::until([&] { return paths.size() == 1; });
    index.stop();
    home.write("Documents/b.txt", "");
    ASSERT_TRUE(index.start(scope, found));
    test::until([&] { return paths.size() == 3; });
    index.stop();
    EXPECT_EQ(std::ranges::count(paths, (home / "Documents/b.txt").native()), 1);
}
