#include "cli/recorder/RecorderProgram.h"

#include "app/control/ControlClient.h"
#include "app/control/ControlServer.h"
#include "cli/Console.h"
#include "cli/Interruption.h"
#include "cli/recorder/CaptureCommands.h"
#include "cli/recorder/FirstSetup.h"
#include "cli/recorder/RecorderCommands.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Files.h"
#include "core/base/Text.h"
#include "platform/linux/LogindMonitor.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QDBusConnection>
#include <QLoggingCategory>
#include <cstdio>
#include <cstdlib>
#include <iostream>

#include <unistd.h>

namespace tidemark::recorderProgram {

namespace {

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

/// That the settings were damaged is told by whoever set them aside.
void tellProblem(Recorder& recorder) {
    if (const auto problem = recorder.preferences().problem())
        std::fprintf(stderr, "%s\n", oneLine(*problem).c_str());
}

std::string carryOutAlone(const RecorderArguments& arguments) {
    const Interruption interruption;
    const Application application;
    // The answer says it all.
    QLoggingCategory::setFilterRules("app.tidemark.captures=false");
    Recorder recorder(RecorderPlaces::current());
    tellProblem(recorder);
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
    if (failure)
        std::rethrow_exception(failure);
    if (interruption.token().stop_requested())
        throw Error("The command was interrupted.");
    return output;
}

QCoro::Task<void> startRecording(Recorder& recorder,
                                 std::optional<std::vector<RecommendedFolder>> chosen) {
    if (chosen)
        co_await captureCommands::setUp(recorder, *std::move(chosen));
    if (const auto& folders = recorder.model().folderAccess();
        folders.message() && !folders.messageIsSuccess())
        std::fprintf(stderr, "%s\n", oneLine(*folders.message()).c_str());
    co_await recorder.model().start();
    if (const auto& error = *recorder.model().state().error)
        std::fprintf(stderr, "%s\n", oneLine(*error).c_str());
}

/// Asks on the terminal. Throws `Error` where there is none.
bool confirmed(const std::string& question) {
    if (::isatty(STDIN_FILENO) == 0)
        throw Error("Nobody is there to ask; --yes does it without a question.");
    std::fprintf(stderr, "%s [y/N] ", question.c_str());
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "y" || answer == "Y" || answer == "yes";
}

/// To the file that was asked for, else to standard output.
void deliver(const RecorderArguments& arguments, const std::string& text) {
    if (arguments.output.empty())
        console::print(text);
    else
        replaceFile(canonicalPath(arguments.output), text);
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
    const RecorderPlaces places = RecorderPlaces::current();
    const bool colour = console::useColour();
    const auto answered = ControlClient::ask(
        places.socket,
        {.arguments = line, .colour = colour, .directory = std::filesystem::current_path()});
    if (answered && !answered->error.empty()) {
        console::print(answered->output);
        throw Error(answered->error);
    }
    const bool isReading = recorderCommands::isReading(arguments.command);
    deliver(arguments, answered    ? answered->output
                       : isReading ? recorderCommands::read(places, arguments, colour)
                                   : carryOutAlone(arguments));
    return answered ? static_cast<int>(answered->status) : 0;
}

} // namespace tidemark::recorderProgram
