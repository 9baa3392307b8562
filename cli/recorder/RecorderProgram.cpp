#include "cli/recorder/RecorderProgram.h"

#include "app/control/ControlClient.h"
#include "app/control/ControlServer.h"
#include "cli/Console.h"
#include "cli/Interruption.h"
#include "cli/OutputFile.h"
#include "cli/recorder/CaptureCommands.h"
#include "cli/recorder/FirstSetup.h"
#include "cli/recorder/RecorderCommands.h"
#include "core/base/Files.h"
#include "core/base/Text.h"
#include "platform/linux/LogindMonitor.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QDBusConnection>
#include <QLoggingCategory>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <thread>

#include <unistd.h>

namespace tidemark::recorderProgram {

namespace {

/// How long a command waits for the data folder: five seconds.
constexpr int folderAttempts = 50;
constexpr std::chrono::milliseconds folderPause{100};

/// Qt wants the arguments of main() for as long as its application lives.
struct Application {
    int count = 1;
    std::string name = "tidemark";
    char* names[2] = {name.data(), nullptr};
    QCoreApplication qt{count, names};
};

/// The journal of the system reads the level of a line from its start (sd-daemon(3)).
const char* journalLevel(QtMsgType type) {
    static const bool toJournal = ::getenv("JOURNAL_STREAM") && ::isatty(STDERR_FILENO) == 0;
    if (!toJournal)
        return "";
    return type == QtCriticalMsg || type == QtFatalMsg ? "<3>"
           : type == QtWarningMsg                      ? "<4>"
                                                       : "<6>";
}

void logToStandardError(QtMsgType type, const QMessageLogContext&, const QString& message) {
    std::fprintf(stderr, "%s%s\n", journalLevel(type), oneLine(message.toStdString()).c_str());
}

/// A request of another process, carried out by the recorder.
QCoro::Task<ControlAnswer> answer(Recorder& recorder, ControlRequest request,
                                  std::stop_token stop) {
    CommandContext context{recorder,
                           parseRecorderArguments(request.arguments),
                           request.directory,
                           request.colour,
                           true,
                           std::move(stop)};
    std::string output = co_await recorderCommands::carryOut(std::move(context));
    ControlAnswer answer;
    answer.output = std::move(output);
    co_return answer;
}

/// The error of a coroutine that nobody awaits is kept for who runs the event loop.
QCoro::Task<void> carryOutHere(CommandContext context, std::string& output,
                               std::exception_ptr& failure) {
    try {
        std::string result = co_await recorderCommands::carryOut(std::move(context));
        output = std::move(result);
    } catch (...) {
        failure = std::current_exception();
    }
    QCoreApplication::quit();
}

std::string textOf(const std::exception_ptr& failure) {
    try {
        if (failure)
            std::rethrow_exception(failure);
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

/// Prints what is wrong with the settings, unless the failure of the command says so. That they
/// could not be stored goes without saying after a failure: it has the same cause.
void tellProblem(Recorder& recorder, const std::exception_ptr& failure = {}) {
    const auto& settings = recorder.preferences();
    const auto problem = failure ? settings.loadingProblem() : settings.problem();
    if (problem && !textOf(failure).contains(*problem))
        std::fprintf(stderr, "%s\n", oneLine(*problem).c_str());
}

/// The file is written here, and its name need not be one that can be handed over.
void hideOutput(std::vector<std::string>& words) {
    for (std::size_t i = 0; i < words.size(); ++i)
        if ((words[i] == "-o" || words[i] == "--output") && i + 1 < words.size())
            words[++i] = "-";
        else if (words[i].starts_with("--output="))
            words[i] = "--output=-";
}

/// What the recorder that runs answers; absent when there is none.
std::optional<ControlAnswer> askRecorder(const RecorderPlaces& places,
                                         const RecorderArguments& arguments,
                                         const std::vector<std::string>& line) {
    ControlClient::Patience patience;
    if (recorderCommands::isReading(arguments.command))
        patience.answer = std::chrono::minutes(1);
    std::error_code error;
    // It is of use for paths alone, and need not exist.
    const auto directory =
        arguments.path.empty() ? std::filesystem::path("/") : std::filesystem::current_path(error);
    ControlRequest request{
        .arguments = line, .colour = console::useColour(), .directory = directory};
    hideOutput(request.arguments);
    return ControlClient::ask(places.socket, request, patience);
}

/// Waits a while for another command to leave the data folder, or a recorder to listen.
std::optional<ControlAnswer> takeFolder(std::optional<Recorder>& recorder,
                                        const RecorderPlaces& places,
                                        const RecorderArguments& arguments,
                                        const std::vector<std::string>& line) {
    for (int attempt = 0;; ++attempt) {
        try {
            recorder.emplace(places);
            return std::nullopt;
        } catch (const FolderTaken&) {
            if (attempt == folderAttempts)
                throw;
        }
        std::this_thread::sleep_for(folderPause);
        if (auto answer = askRecorder(places, arguments, line))
            return answer;
    }
}

ControlAnswer carryOutAlone(const RecorderPlaces& places, const RecorderArguments& arguments,
                            const std::vector<std::string>& line) {
    const Interruption interruption;
    const Application application;
    // The answer says it all.
    QLoggingCategory::setFilterRules("app.tidemark.captures=false");
    std::optional<Recorder> taken;
    if (auto answer = takeFolder(taken, places, arguments, line))
        return *std::move(answer);
    Recorder& recorder = *taken;
    std::string output;
    std::exception_ptr failure;
    const std::stop_callback quit(interruption.token(), [] {
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    });
    QMetaObject::invokeMethod(
        qApp,
        [&] {
            recorder.tasks().start(carryOutHere(
                {recorder, arguments, std::filesystem::current_path(), console::useColour(), false},
                output, failure));
        },
        Qt::QueuedConnection);
    QCoreApplication::exec();
    recorder.model().stopAutomaticCaptures();
    recorder.tasks().drain();
    tellProblem(recorder, failure);
    if (interruption.token().stop_requested())
        throw Error("The command was interrupted.");
    if (failure)
        std::rethrow_exception(failure);
    return {0, std::move(output), {}};
}

QCoro::Task<void> startRecording(Recorder& recorder,
                                 std::optional<std::vector<RecommendedFolder>> chosen) {
    if (chosen)
        co_await captureCommands::setUp(recorder, *std::move(chosen));
    if (const auto& folders = recorder.model().folderAccess();
        folders.message() && !folders.messageIsSuccess())
        std::fprintf(stderr, "%s\n", oneLine(*folders.message()).c_str());
    // What fails there is in the log.
    co_await recorder.model().start();
}

/// Asks on the terminal. Throws `Error` where there is none.
bool confirmed(const std::string& question) {
    if (::isatty(STDIN_FILENO) == 0)
        throw Error("Nobody is there to ask; --yes does it without a question.");
    std::fprintf(stderr, "%s [y/N] ", question.c_str());
    std::string answer;
    std::getline(std::cin, answer);
    if (answer.starts_with('y') || answer.starts_with('Y'))
        return true;
    std::fputs("Nothing was deleted.\n", stderr);
    return false;
}

} // namespace

int run(const std::string& setup) {
    const Interruption interruption;
    const Application application;
    qInstallMessageHandler(logToStandardError);
    Recorder recorder(RecorderPlaces::current());
    tellProblem(recorder);
    const auto chosen = firstSetup(recorder, setup, interruption.token());
    if (interruption.token().stop_requested())
        return 0;

    auto server =
        std::make_unique<ControlServer>([&recorder](ControlRequest request, std::stop_token stop) {
            return answer(recorder, std::move(request), std::move(stop));
        });
    server->listen(recorder.places().socket, recorder.lock());
    const LogindMonitor sleepAndSession(QDBusConnection::systemBus(), recorder.workspace(),
                                        [&recorder] { return recorder.liveServices().writer(); });
    const std::stop_callback quit(interruption.token(), [] {
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    });
    QMetaObject::invokeMethod(
        qApp, [&] { recorder.tasks().start(startRecording(recorder, chosen)); },
        Qt::QueuedConnection);
    QCoreApplication::exec();
    recorder.model().stopAutomaticCaptures();
    // Before the wait for what still runs: no client may begin anything new.
    server.reset();
    recorder.tasks().drain();
    return 0;
}

int carryOut(const RecorderArguments& arguments, const std::vector<std::string>& line) {
    if (arguments.command == RecorderArguments::Command::deleteSnapshot && !arguments.yes
        && !confirmed("Delete the snapshot \"" + oneLine(arguments.name) + "\"?"))
        return 0;
    const auto output =
        arguments.output.empty() ? std::nullopt : std::optional(writableFile(arguments.output));
    const RecorderPlaces places = RecorderPlaces::current();
    auto answer = askRecorder(places, arguments, line);
    if (!answer && recorderCommands::isReading(arguments.command))
        answer =
            ControlAnswer{0, recorderCommands::read(places, arguments, console::useColour()), {}};
    if (!answer)
        answer = carryOutAlone(places, arguments, line);
    if (answer->error.empty() && output)
        replaceFile(*output, answer->output);
    else
        console::print(answer->output);
    if (!answer->error.empty())
        throw Error(answer->error);
    return static_cast<int>(answer->status);
}

} // namespace tidemark::recorderProgram
