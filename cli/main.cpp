#include "cli/CompareCommand.h"
#include "cli/Console.h"
#include "cli/ObserveCommand.h"
#include "cli/recorder/RecorderArguments.h"
#include "cli/recorder/RecorderProgram.h"
#include "core/base/Text.h"

#include <csignal>
#include <cstdio>
#include <functional>
#include <new>

#include <CLI/CLI.hpp>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int failed = 1;
constexpr int wrongUsage = 2;

constexpr const char* description =
    "Tidemark records what changed on this computer. Everything stays on the machine.";

/// What an unset variable of a shell becomes is no path.
std::string notEmpty(const std::string& path) {
    return path.empty() ? "a path can't be empty" : "";
}

/// The commands by name, and the one that the arguments chose.
class CommandLine {
public:
    CommandLine() : app(description, "tidemark") {
        app.set_version_flag("--version", "tidemark " TIDEMARK_VERSION);
        app.set_help_flag("-h,--help", "Print this help and exit");
        app.require_subcommand(0, 1);
        addRun();
        tidemark::addRecorderCommands(app, recorder);
        addObserve();
        addCompare();
    }

    int run(int argc, char** argv) {
        try {
            app.parse(argc, argv);
            const int status = carryOut({argv + 1, argv + argc});
            tidemark::console::finishOutput();
            return status;
        } catch (const CLI::ParseError& error) {
            return app.exit(error) == 0 ? 0 : wrongUsage;
        } catch (const std::bad_alloc&) {
            return fail("There is not enough memory.");
        } catch (const std::exception& error) {
            return fail(error.what());
        }
    }

private:
    int carryOut(const std::vector<std::string>& line) const {
        if (recorder.command != tidemark::RecorderArguments::Command::none)
            return tidemark::recorderProgram::carryOut(recorder, line);
        if (chosen)
            return chosen();
        tidemark::console::print(app.help());
        return 0;
    }

    static int fail(const char* sentence) {
        std::fprintf(stderr, "tidemark: %s\n", tidemark::oneLine(sentence).c_str());
        return failed;
    }

    CLI::App& command(const std::string& name, const std::string& purpose,
                      std::function<int()> action) {
        CLI::App& added = *app.add_subcommand(name, purpose);
        added.set_version_flag("--version", app.version());
        added.callback([this, action = std::move(action)] { chosen = action; });
        return added;
    }

    void addRun() {
        auto& added = command("run", "Record in the foreground until Control-C",
                              [this] { return tidemark::recorderProgram::run(setup); });
        added
            .add_option(
                "--setup", setup,
                "At a first start: monitor the recommended folders that can be read, or none")
            ->check(CLI::IsMember({"recommended", "none"}));
    }

    void addObserve() {
        auto& added = command("observe", "Take one observation of this machine", [this] {
            observe.run();
            return 0;
        });
        const auto folders = [&](const std::string& names, auto& target, const std::string& what) {
            added.add_option(names, target, what)->type_name("DIR")->check(notEmpty);
        };
        const auto file = [&](const std::string& names, auto& target, const std::string& what) {
            added.add_option(names, target, what)->type_name("FILE")->check(notEmpty);
        };
        folders("--applications", observe.applications, "Folder to search for applications");
        folders("--agents", observe.agents, "Folder of agent definitions");
        folders("--daemons", observe.daemons, "Folder of daemon definitions");
        folders("--storage", observe.storage, "Folder to measure");
        added.add_flag("--homebrew", observe.homebrew, "Add the installed Homebrew formulas");
        added.add_flag("--diagnostics", observe.diagnostics, "Add the diagnostic reports");
        file("--config", observe.configurations, "Configuration file to fingerprint");
        file("--measurements", observe.measurements,
             "Keep finished measurements here, so that the next run continues");
        file("-o,--output", observe.output, "Write the observation here as stored JSON");
        added.add_flag("--json", observe.json, "Print the observation as stored JSON");
        added.footer("Options that take a folder or a --config file can be given several times.\n"
                     "Control-C ends the observation early; a second one ends the program.");
    }

    void addCompare() {
        auto& added =
            command("compare", "Tell what changed between two stored observations", [this] {
                compare.run();
                return 0;
            });
        added.add_option("BEFORE", compare.before, "File with the earlier observation")->required();
        added.add_option("AFTER", compare.after, "File with the later observation")->required();
        added.add_flag("--json", compare.json, "Print the events as one JSON array");
    }

    CLI::App app;
    std::function<int()> chosen;
    std::string setup;
    tidemark::RecorderArguments recorder;
    tidemark::ObserveCommand observe;
    tidemark::CompareCommand compare;
};

} // namespace

/// A file that the program opens must not get the number of a stream that its parent had closed:
/// what is printed would go into it.
void openStandardStreams() {
    int opened = -1;
    do
        opened = ::open("/dev/null", O_RDWR);
    while (opened >= 0 && opened <= STDERR_FILENO);
    if (opened >= 0)
        ::close(opened);
}

int main(int argc, char** argv) {
    openStandardStreams();
    // A parent may have left it ignored, and then the end of a child process could not be known.
    std::signal(SIGCHLD, SIG_DFL);
    // A write beyond the largest file that is allowed (ulimit -f) fails like any other, instead of
    // ending the program with a temporary file left. A handler, unlike an ignored signal, is not
    // inherited by the programs that this one starts.
    std::signal(SIGXFSZ, [](int) {});
    return CommandLine().run(argc, argv);
}
