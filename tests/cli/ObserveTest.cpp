#include "core/base/JsonDecoder.h"
#include "core/base/Text.h"
#include "core/records/Snapshot.h"
#include "tests/cli/Program.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/Pipe.h"
#include "tests/support/PropertyLists.h"
#include "tests/support/ResourceLimit.h"
#include "tests/support/Terminal.h"

#include <csignal>
#include <fstream>
#include <thread>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

using namespace tidemark;
using test::Outcome;
using test::Output;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

namespace {

struct ObserveCommand : testing::Test {
    test::TemporaryFolder folder;

    std::string path(const std::string& name) const { return (folder / name).native(); }
    Words arguments(const Words& more) const {
        Words words{"observe", "--applications", path("apps"), "--agents", path("agents")};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }
    Outcome observe(const Words& more, Output output = Output::file) const {
        return test::run(arguments(more), output);
    }
    /// The observation that the program prints with --json.
    Snapshot snapshot(Words more) const {
        more.push_back("--json");
        const Outcome outcome = observe(more);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return json::decode<Snapshot>(outcome.out);
    }
    static std::string pair(const std::string& key, const std::string& text) {
        return "<key>" + key + "</key><string>" + text + "</string>";
    }
    void writeBundle(const std::string& name, const std::string& version,
                     std::string (*form)(std::string_view) = test::xmlList) const {
        folder.write("apps/" + name + ".app/Contents/Info.plist",
                     form("<dict>" + pair("CFBundleIdentifier", "org.example." + name)
                          + pair("CFBundleName", name) + pair("CFBundleShortVersionString", version)
                          + "</dict>"));
    }
    void writeAgent(const std::string& name, const std::string& keepAlive,
                    std::string (*form)(std::string_view)) const {
        folder.write("agents/" + name + ".plist",
                     form("<dict>" + pair("Label", "org.example." + name)
                          + pair("Program", "/bin/" + name) + "<key>KeepAlive</key>" + keepAlive
                          + "</dict>"));
    }
};

/// The message of the program for a failure.
std::string sentence(const std::string& file, const std::string& reason) {
    return "tidemark: " + file + reason + "\n";
}

/// The program, which hangs at its first write to standard error, a full pipe. It starts with
/// SIGINT blocked, so that the signal has no effect before the program itself handles it.
class StalledProgram {
public:
    StalledProgram(Words words, const std::string& outFile) {
        standardError.fill();
        words.insert(words.begin(), TIDEMARK_PROGRAM);
        std::vector<char*> argv;
        for (auto& word : words)
            argv.push_back(word.data());
        argv.push_back(nullptr);
        sigset_t interrupt;
        sigset_t old;
        ::sigemptyset(&interrupt);
        ::sigaddset(&interrupt, SIGINT);
        ::pthread_sigmask(SIG_BLOCK, &interrupt, &old);
        child = ::fork();
        if (child == 0) {
            const int out = ::open(outFile.c_str(), O_WRONLY | O_CREAT, 0600);
            ::dup2(out, STDOUT_FILENO);
            ::dup2(standardError.writing.get(), STDERR_FILENO);
            ::execv(argv[0], argv.data());
            ::_exit(127);
        }
        ::pthread_sigmask(SIG_SETMASK, &old, nullptr);
        standardError.writing.reset();
    }

    /// Sends SIGINT and returns when the program has handled it.
    void interrupt() const {
        ::kill(child, SIGINT);
        const fs::path process = "/proc/" + std::to_string(child);
        while (test::contains(test::contents(process / "status"), "ShdPnd:\t0000000000000002"))
            std::this_thread::yield();
        while (!allAsleep(process / "task"))
            std::this_thread::yield();
    }
    /// Reads what the program writes to standard error until the program has ended.
    void readErrors() const {
        char block[4096];
        while (::read(standardError.reading.get(), block, sizeof block) > 0)
            ;
    }
    /// Waits for the program to end and returns its exit status; −1 when a signal ended it.
    int wait() const {
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    static bool allAsleep(const fs::path& threads) {
        std::error_code ended;
        for (const auto& thread : fs::directory_iterator(threads, ended)) {
            const std::string stat = test::contents(thread.path() / "stat");
            const auto state = stat.rfind(") ");
            if (state != std::string::npos && !test::contains("SZX", stat.substr(state + 2, 1)))
                return false;
        }
        return true;
    }

    pid_t child;
    test::Pipe standardError;
};

} // namespace

TEST_F(ObserveCommand, PrintsTheObservationAsText) {
    writeBundle("Sextant", "2.0");
    folder.write("tree/sub/file", "12345");
    folder.write("tree/file", "123");
    folder.makeFolder("agents");
    const Outcome outcome = observe({"--storage", path("tree"), "--storage", path("tree") + "/",
                                     "--storage", path("none"), "--config", path("tree/file")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "Scanning Applications and Background Items…\nScanning tree…\n"
                           "Scanning none…\nScanning Additional History…\n");
    for (const std::string& part :
         {std::string("Applications      1\n  Background items  0\n"
                      "  Further sources   1 source, 1 item\n"),
          "\nSizes\n     8 bytes  " + path("tree")
              + "\n         5 bytes  sub\n         3 bytes  Files in folder\n",
          std::string("\nNot seen completely\n  Storage · none: Some entries could not be read."),
          std::string(" s  none (incomplete)\n")})
        EXPECT_TRUE(test::contains(outcome.out, part));
}

TEST_F(ObserveCommand, WritesAPrivateFile) {
    folder.write("snapshot.json", "old");
    fs::permissions(folder / "snapshot.json", fs::perms(0644));
    fs::create_symlink("snapshot.json", folder / "link");
    const Outcome outcome = observe({"-o", path("link"), "--json"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(test::contents(folder / "snapshot.json") + "\n", outcome.out);
    EXPECT_EQ(json::decode<Snapshot>(outcome.out).coverage.applicationRoots,
              std::set{path("apps")});
    EXPECT_EQ(test::modeOf(folder / "snapshot.json"), 0600U);
    EXPECT_EQ(test::namesIn(folder.path()), "link snapshot.json");
    EXPECT_EQ(observe({"-o", path("snapshot.json")}).out, "");
}

TEST_F(ObserveCommand, FailsWithOneSentenceBeforeItObserves) {
    ::mkfifo(path("pipe").c_str(), 0600);
    folder.makeFolder("locked");
    fs::permissions(folder / "locked", fs::perms(0555));
    const test::OrdinaryUser user(folder.path());
    const std::pair<std::string, std::string> cases[] = {
        {path("none/file"), " could not be written: No such file or directory."},
        {path("locked/file"), " could not be written: Permission denied."},
        {path(std::string(256, 'n')), " could not be written: File name too long."},
        {path("pipe"), " is not a regular file."},
        {path("locked"), " is not a regular file."},
        {"/dev/null", " is not a regular file."},
    };
    for (const auto& [file, reason] : cases)
        EXPECT_EQ(observe({"-o", file, "--json", "--storage", path("locked"), "--measurements",
                           path("measured-meanwhile")}),
                  (Outcome{1, "", sentence(file, reason)}));
    EXPECT_EQ(test::namesIn(folder.path()), "locked pipe");
    for (const char* option : {"--storage", "--config", "--measurements", "-o"})
        EXPECT_EQ(observe({option, ""}).status, 2);
}

TEST_F(ObserveCommand, DrawsItsProgressOnlyOnATerminalThatTakesEscapes) {
    if (!test::hasTerminals())
        GTEST_SKIP() << "this machine has no terminals";
    const auto errorsToTerminal = [] { ::dup2(STDOUT_FILENO, STDERR_FILENO); };
    for (const auto& [terminal, draws] : {std::pair("TERM=xterm", true), {"TERM=dumb", false}}) {
        const Outcome outcome =
            test::run(arguments({}), Output::terminal, {terminal}, errorsToTerminal);
        EXPECT_EQ(outcome.out.contains("\r\033[K"), draws) << terminal;
    }
}

TEST_F(ObserveCommand, KeepsTheOldFileWhenTheDiskIsFull) {
    folder.write("snapshot.json", "old");
    const Outcome outcome = [&] {
        const test::ResourceLimit disk(RLIMIT_FSIZE, 300);
        return observe({"-o", path("snapshot.json"), "--json"});
    }();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(test::contains(
        outcome.err, sentence(path("snapshot.json"), " could not be written: File too large.")))
        << outcome.err;
    EXPECT_EQ(test::contents(folder / "snapshot.json"), "old");
    EXPECT_EQ(test::namesIn(folder.path()), "snapshot.json");
    EXPECT_EQ(observe({"--json"}, Output::fullDisk).status, 1);
}

TEST_F(ObserveCommand, KeepsMeasurementsForTheNextRun) {
    writeBundle("Sextant", "2.0");
    const Words options{"--storage", path("apps"), "--measurements", path("data/known.json")};
    const auto measured = [](const Snapshot& snapshot) {
        return snapshot.applicationStorage.value().records.at(0)->measuredAt.value();
    };
    const Snapshot first = snapshot(options);
    EXPECT_EQ(test::modeOf(folder / "data/known.json"), 0600U);
    EXPECT_EQ(test::modeOf(folder / "data"), 0700U);
    EXPECT_EQ(measured(snapshot(options)), measured(first));
    writeBundle("Sextant", "2.1");
    EXPECT_GT(measured(snapshot(options)), measured(first));

    for (const char* damage : {"", "{", "[]", R"({"/a":{}})"}) {
        folder.write("data/known.json", damage);
        const Snapshot later = snapshot(options);
        EXPECT_EQ(later.coverage.issues.size(), 1U) << damage;
        EXPECT_EQ(later.folders.size(), 0U);
        EXPECT_EQ(test::contents(folder / "data/known.json"), damage);
    }
}

TEST_F(ObserveCommand, MakesObservationsThatCompareFinds) {
    writeBundle("Lantern", "3.4", test::binaryList);
    writeBundle("Paperweight", "1.9");
    writeAgent("sync", "<true/>", test::binaryList);
    writeAgent("gone", "<true/>", test::xmlList);
    folder.write("tree/file", "1");
    folder.write(".gitconfig", "token = secret");
    const auto observeTo = [&](const std::string& file) {
        EXPECT_EQ(observe({"--storage", path("tree"), "--config", path(".gitconfig"), "-o",
                           path(file), "--measurements", path("known.json")})
                      .status,
                  0);
    };
    observeTo("before");
    writeBundle("Lantern", "3.5");
    fs::remove_all(folder / "apps/Paperweight.app");
    writeBundle("Sextant", "2.0", test::binaryList);
    writeAgent("sync", "<dict><key>SuccessfulExit</key><true/></dict>", test::xmlList);
    fs::remove(folder / "agents/gone.plist");
    fs::resize_file(folder.write("tree/film", ""), 6'000'000'000);
    folder.write(".gitconfig", "token = other");
    observeTo("after");

    const Outcome outcome = test::run({"compare", path("before"), path("after")});
    for (const char* line : {"Lantern Updated", "3.4 → 3.5", "Paperweight Removed",
                             "Previously 1.9", "Sextant Installed", "Background Item Changed",
                             "org.example.sync", "Background Item Removed", "org.example.gone",
                             "tree Grew in Size", "+6 GB", "Git configuration"})
        EXPECT_TRUE(test::contains(outcome.out, line));
    EXPECT_TRUE(test::contains(test::run({"compare", path("after"), path("after")}).out,
                               "Nothing changed between "));
    EXPECT_FALSE(test::contains(test::contents(folder / "after"), "token"));
}

#ifndef __APPLE__
TEST_F(ObserveCommand, ObservesAMachineThatLiesElsewhere) {
    const std::string unit = "usr/lib/systemd/system/a.service";
    folder.write("machine/" + unit, "[Service]\nExecStart=/x secret\n[Install]\nWantedBy=y\n");
    folder.write("machine/usr/lib/os-release", "NAME=Made\nVERSION_ID=1\n");
    folder.makeFolder("machine/etc");
    fs::create_symlink("/usr/lib/os-release", folder / "machine/etc/os-release");
    const auto observeRoot = [&](const Words& more) {
        Words words{"observe", "--root", path("machine")};
        words.insert(words.end(), more.begin(), more.end());
        return test::run(words);
    };
    const auto seen = json::decode<Snapshot>(observeRoot({"--json", "-o", path("before")}).out);
    EXPECT_EQ(seen.backgroundItems->at(0)->path, "/" + unit);
    EXPECT_EQ(seen.operatingSystem, (OperatingSystemObservation{"Made 1", {}}));
    EXPECT_FALSE(seen.freeBytes || seen.volumeID || seen.volumeContext);
    EXPECT_EQ(seen.coverage.issues, Words());
    folder.write("machine/usr/lib/os-release", "NAME=Made\nVERSION_ID=2\n");
    fs::remove(folder / "machine" / unit);
    EXPECT_EQ(observeRoot({"-o", path("after")}).status, 0);
    const std::string changes = test::run({"compare", path("before"), path("after")}).out;
    EXPECT_TRUE(test::contains(changes, "Made 1 → Made 2"));
    EXPECT_TRUE(test::contains(changes, "Background Item Removed"));
    EXPECT_EQ(observeRoot({"--storage", "/etc"}).status, 2);
    const Outcome missing = test::run({"observe", "--root", path("missing")});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(test::contains(missing.err, path("missing") + " could not be opened"));
}
#endif

TEST_F(ObserveCommand, HandlesAnyFileName) {
    const std::string name = "line\nfeed \xFF\033[2J";
    folder.write("apps/" + name + ".app/Contents/Info.plist",
                 test::xmlList("<dict>" + pair("CFBundleIdentifier", "a") + "</dict>"));
    folder.write("tree/" + name + "/" + name, "123");
    folder.write("tree/file " + name, "1");
    folder.write(name + "/file", "12");
    folder.write(std::string(255, 'n') + "/" + std::string(255, 'm') + "/file", "1234");
    const Words options{"--storage", path("tree"),
                        "--storage", path(name),
                        "--storage", path(std::string(255, 'n')),
                        "--config",  path(name + "/file"),
                        "-o",        path("snapshot\n\xFF.json")};
    const Snapshot seen = snapshot(options);
    EXPECT_TRUE(isValidUtf8(test::contents(folder / "snapshot\n\xFF.json")));
    EXPECT_EQ(seen.applications->at(0)->name, textFromBytes(name));
    EXPECT_EQ(seen.additionalReports->at(0).items->at(0).bytes, 2);
    std::map<std::string, std::int64_t> sizes;
    for (const auto& size : seen.folders)
        sizes[size->path] = size->bytes;
    EXPECT_EQ(sizes.at(textFromBytes(path(name))), 2);
    EXPECT_EQ(sizes.at(path(std::string(255, 'n'))), 4);

    const Outcome outcome = observe({"--storage", path("tree"), "--storage", path(name)});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(isValidUtf8(outcome.out));
    EXPECT_EQ((outcome.out + outcome.err).find('\033'), std::string::npos);
}

TEST_F(ObserveCommand, StopsEarlyOnTheFirstSignalAndAtOnceOnTheSecond) {
    folder.write("tree/sub/file", "1");
    const Words words = arguments({"--storage", path("tree"), "-o", path("snapshot.json")});
    const StalledProgram once(words, path("out"));
    once.interrupt();
    once.readErrors();
    EXPECT_EQ(once.wait(), 0);
    const auto seen = json::decode<Snapshot>(test::contents(folder / "snapshot.json"));
    EXPECT_EQ(seen.coverage.issues,
              (Words{"Applications: incomplete access or scan limit at " + path("apps")
                         + ". Changes in this location are paused.",
                     "Background items: cannot completely read " + path("agents")
                         + ". Changes in this location are paused.",
                     "Storage · tree: The overall storage scan was paused or reached its time "
                     "limit. No size comparison was made."}));

    fs::remove(folder / "snapshot.json");
    const StalledProgram twice(words, path("out"));
    twice.interrupt();
    twice.interrupt();
    EXPECT_EQ(twice.wait(), 128 + SIGINT);
    EXPECT_EQ(test::namesIn(folder.path()), "out tree");
}
