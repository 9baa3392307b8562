#include "tests/cli/RecorderProgram.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace tidemark;
using test::Outcome;
using test::Words;

namespace {

/// Makes `path` the working directory of this process while the object exists.
class WorkingDirectory {
public:
    explicit WorkingDirectory(const std::filesystem::path& path) {
        std::filesystem::current_path(path);
    }
    ~WorkingDirectory() { std::filesystem::current_path(before); }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;

private:
    std::filesystem::path before = std::filesystem::current_path();
};

struct Requests : test::RecorderProgram {
    /// The recorder's answer to a raw request, as any program of the user may send it.
    std::string answerTo(const std::string& name, const std::string& options) const {
        std::string json = R"({"version":2,"colour":false,"command":)" + quoted(name)
                           + R"(,"options":)" + quoted(options) + "}";
        const auto size = static_cast<std::uint32_t>(json.size());
        for (unsigned shift = 0; shift < 32; shift += 8)
            json.insert(json.begin(), static_cast<char>(size >> shift & 0xFFU));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::filesystem::directory_iterator sockets(folder / "run/Tidemark");
        sockets->path().native().copy(address.sun_path, sizeof address.sun_path - 1);
        const int client = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        std::string answer;
        if (::connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0
            && ::send(client, json.data(), json.size(), MSG_NOSIGNAL) > 0) {
            std::array<char, 4096> block{};
            for (ssize_t count = 0; (count = ::read(client, block.data(), block.size())) > 0;)
                answer.append(block.data(), static_cast<std::size_t>(count));
        }
        ::close(client);
        return answer;
    }

private:
    static std::string quoted(const std::string& text) {
        std::string json = "\"";
        for (const char letter : text)
            json += (letter == '"' || letter == '\\' ? "\\" : "") + std::string{letter};
        return json + "\"";
    }
};

} // namespace

TEST_F(Requests, AreCheckedLikeACommandLine) {
    startRecording();
    const std::string folders = command({"folders"}).out;
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"erase", "{}", "no command"},
        {"run", R"({"setup":"none"})", "no command"},
        {"snapshot", "{}", "no command"},
        {"status", "", "The recorder can't take this request"},
        {"status", "[]", "expected an object"},
        {"status", "{}", "\\\"json\\\" is missing"},
        {"status", R"({"json":"yes"})", "json: expected true or false"},
        {"schedule", R"({"value":"often"})", "often"},
        {"snapshot save", R"({"name":"a\u0000b"})", "name: a text can't hold a NUL"},
        {"timeline",
         R"({"category":[],"place":"timeline","search":"","counts":false,"ids":false,"json":false,)"
         R"("limit":-1})",
         "--limit: the number must be"},
        {"timeline",
         R"({"category":[],"place":"timeline","search":"","counts":false,"ids":false,"json":false,)"
         R"("window":"9z"})",
         "--window: "},
        {"timeline",
         R"({"category":[],"place":"timeline","search":"","counts":false,"ids":false,"json":false,)"
         R"("window":"day","since":"7d"})",
         "together"},
        // The first two are "Stuff" and "/\0x" as base64, the third is no valid base64.
        {"folders add", R"({"path":{"bytes":"U3R1ZmY="},"purpose":[]})", "must be absolute"},
        {"folders add", R"({"path":{"bytes":"LwB4"},"purpose":[]})", "can't hold a NUL"},
        {"folders add", R"({"path":{"bytes":"Zm9v="},"purpose":[]})", "base64"},
        {"folders add", R"({"path":"/tmp","purpose":[]})", "expected an object"},
        {"folders add", R"({"path":{"bytes":"L3RtcA=="},"purpose":["all"]})", "all"},
    };
    for (const auto& [name, options, says] : cases) {
        const std::string answer = answerTo(name, options);
        EXPECT_TRUE(test::contains(answer, "\"status\":1")) << name;
        EXPECT_TRUE(test::contains(answer, says)) << name;
    }
    EXPECT_EQ(command({"folders"}).out, folders);
    EXPECT_TRUE(test::contains(answerTo("status", R"({"json":true})"), "\"status\":0"));
}

TEST_F(Requests, HaveAbsolutePaths) {
    startRecording();
    const auto other = folder.makeFolder("Other/na\xFFme");
    {
        const WorkingDirectory here(folder / "Other");
        const Outcome added = command({"folders", "add", "na\xFFme"});
        EXPECT_EQ(added.status, 0) << added.err;
        EXPECT_TRUE(test::contains(command({"folders", "remove", "./na\xFFme/"}).out, "no longer"));
    }
    const WorkingDirectory gone(other);
    std::filesystem::remove(other);
    const Words relative{"folders", "add", "Stuff"};
    const std::string sentence = "tidemark: The working directory was removed: give an absolute "
                                 "path instead of \"Stuff\".\n";
    EXPECT_EQ(command({"status"}).status, 0);
    EXPECT_EQ(command(relative), (Outcome{1, "", sentence}));
    EXPECT_EQ(stop(SIGTERM), 0);
    EXPECT_EQ(command({"capture"}).err, "");
    EXPECT_EQ(command(relative), (Outcome{1, "", sentence}));
    EXPECT_EQ(command({"export", "--format", "csv", "-o", "Stuff"}), (Outcome{1, "", sentence}));
}

TEST_F(Requests, DoNotOverwriteTheProgramsOwnFiles) {
    command({"folders", "add", monitored()});
    command({"capture"});
    command({"pause"});
    const auto data = folder / "data/Tidemark";
    std::filesystem::create_directory_symlink(data, folder / "link");
    std::filesystem::create_symlink(data / "journal.json", folder / "history");
    const Words documents{(data / "journal.json").native(),
                          (data / "no-such-file").native(),
                          (data / "Backups/journal.json").native(),
                          (folder / "link/storage-measurements.json").native(),
                          (folder / "history").native(),
                          (folder / "config/Tidemark/settings.json").native()};
    const std::string before = test::contents(data / "journal.json");
    const std::string settings = test::contents(folder / "config/Tidemark/settings.json");
    for (const auto& document : documents)
        for (Words words : {Words{"observe", "--applications", monitored(), "-o"},
                            {"observe", "--applications", monitored(), "--measurements"},
                            {"export", "--format", "json", "-o"}}) {
            words.push_back(document);
            const Outcome outcome = command(words);
            EXPECT_EQ(outcome.status, 1) << words.front() << document;
            EXPECT_TRUE(test::contains(outcome.err, "keeps its own files"));
        }
    if (::geteuid() == 0) {
        const auto mounted = folder.makeFolder("mounted");
        const auto mount = [&] {
            ::unshare(CLONE_NEWNS);
            ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
            ::mount(data.c_str(), mounted.c_str(), nullptr, MS_BIND, nullptr);
        };
        const Words words{"export", "--format", "json", "-o", (mounted / "journal.json").native()};
        EXPECT_TRUE(test::contains(command(words, mount).err, "keeps its own files"));
    }
    EXPECT_EQ(test::contents(data / "journal.json"), before);
    EXPECT_EQ(test::contents(folder / "config/Tidemark/settings.json"), settings);
    EXPECT_FALSE(std::filesystem::exists(data / "Backups"));
}
