#pragma once

#include "tests/cli/Program.h"
#include "tests/support/Pipe.h"

#include <array>
#include <csignal>
#include <filesystem>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tidemark::test {

using Words = std::vector<std::string>;

/// Runs a recorder and commands of the program with data, settings and monitored folders of their
/// own.
struct RecorderProgram : testing::Test {
    TemporaryFolder folder;
    std::filesystem::path stuff = folder.makeFolder("Stuff/part");
    pid_t recorder = -1;
    FileDescriptor log;
    std::string logged;
    /// Further environment variables of recorders and commands; they override the usual ones.
    Words more;

    RecorderProgram() {
        folder.makeFolder("run");
        std::filesystem::permissions(folder / "run", std::filesystem::perms::owner_all);
        grow(1);
    }
    ~RecorderProgram() override { stop(SIGKILL); }

    Words environment() const {
        const std::string root = folder.path().native();
        Words variables = more;
        variables.insert(variables.end(),
                         {"XDG_DATA_HOME=" + root + "/data", "XDG_CONFIG_HOME=" + root + "/config",
                          "XDG_RUNTIME_DIR=" + root + "/run", "HOME=" + root});
        return variables;
    }
    Outcome command(const Words& words) const { return run(words, Output::file, environment()); }
    Outcome command(const Words& words, const std::function<void()>& beforehand) const {
        return run(words, Output::file, environment(), beforehand);
    }
    std::string monitored() const { return (folder / "Stuff").native(); }
    /// Sets the size of a sparse file in the monitored folder.
    void grow(std::uintmax_t gigabytes) const {
        if (!std::filesystem::exists(stuff / "file"))
            folder.write("Stuff/part/file", "");
        std::filesystem::resize_file(stuff / "file", gigabytes * 1'000'000'000);
    }

    void start() {
        Pipe pipe;
        startWith(pipe.writing.get());
        log = std::move(pipe.reading);
        logged.clear();
    }
    /// Starts a recorder that monitors the folder, and waits for its first capture.
    void startRecording() {
        ASSERT_EQ(command({"folders", "add", monitored()}).status, 0);
        start();
        ASSERT_TRUE(waitFor("Capture saved")) << logged;
    }
    void startWith(int standardError) {
        Words variables = environment();
        std::vector<char*> envp;
        for (std::string& variable : variables)
            envp.push_back(variable.data());
        envp.push_back(nullptr);
        recorder = ::fork();
        if (recorder == 0) {
            ::dup2(standardError, STDERR_FILENO);
            ::execle(TIDEMARK_PROGRAM, TIDEMARK_PROGRAM, "run", nullptr, envp.data());
            ::_exit(127);
        }
    }
    /// Reads the recorder's log until it contains `words`; false when it ends before.
    bool waitFor(const std::string& words) {
        std::array<char, 512> block{};
        while (logged.find(words) == std::string::npos) {
            const ssize_t count = ::read(log.get(), block.data(), block.size());
            if (count <= 0)
                return false;
            logged.append(block.data(), static_cast<std::size_t>(count));
        }
        return true;
    }
    /// Sends a signal to the recorder, waits for its end and returns its exit status; −1 when a
    /// signal ended it. Returns 0 at once when no recorder was started.
    int stop(int signal) {
        if (recorder <= 0)
            return 0;
        ::kill(recorder, signal);
        int status = 0;
        ::waitpid(recorder, &status, 0);
        recorder = -1;
        log.reset();
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

} // namespace tidemark::test
