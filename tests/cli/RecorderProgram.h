#pragma once

#include "tests/cli/Program.h"

#include <array>
#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tidemark::test {

using Words = std::vector<std::string>;

/// A user of the recorder, with folders of her own.
struct RecorderProgram : testing::Test {
    TemporaryFolder folder;
    std::filesystem::path stuff = folder.makeFolder("Stuff/part");
    pid_t recorder = -1;
    int log = -1;
    std::string logged;

    RecorderProgram() {
        folder.makeFolder("run");
        std::filesystem::permissions(folder / "run", std::filesystem::perms::owner_all);
        grow(1);
    }
    ~RecorderProgram() override { stop(SIGKILL); }

    Words environment() const {
        const std::string root = folder.path().native();
        return {"XDG_DATA_HOME=" + root + "/data", "XDG_CONFIG_HOME=" + root + "/config",
                "XDG_RUNTIME_DIR=" + root + "/run", "HOME=" + root};
    }
    Outcome command(const Words& words) const { return run(words, Output::file, environment()); }
    Outcome command(const Words& words, const std::function<void()>& beforehand) const {
        return run(words, Output::file, environment(), beforehand);
    }
    std::string monitored() const { return (folder / "Stuff").native(); }
    /// A sparse file: its size counts.
    void grow(std::uintmax_t gigabytes) const {
        if (!std::filesystem::exists(stuff / "file"))
            folder.write("Stuff/part/file", "");
        std::filesystem::resize_file(stuff / "file", gigabytes * 1'000'000'000);
    }

    void start() {
        int ends[2];
        ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        startWith(ends[1]);
        ::close(ends[1]);
        log = ends[0];
        logged.clear();
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
    /// Reads the recorder's log until it says so, or ends.
    bool waitFor(const std::string& words) {
        std::array<char, 512> block{};
        while (logged.find(words) == std::string::npos) {
            const ssize_t count = ::read(log, block.data(), block.size());
            if (count <= 0)
                return false;
            logged.append(block.data(), static_cast<std::size_t>(count));
        }
        return true;
    }
    /// The exit status of the recorder; −1 when the signal ended it.
    int stop(int signal) {
        if (recorder <= 0)
            return 0;
        ::kill(recorder, signal);
        int status = 0;
        ::waitpid(recorder, &status, 0);
        recorder = -1;
        ::close(log);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

} // namespace tidemark::test
