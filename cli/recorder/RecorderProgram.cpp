#include "cli/recorder/RecorderProgram.h"

#include "app/control/ControlClient.h"
#include "app/control/ControlServer.h"
#include "cli/Console.h"
#include "cli/Interruption.h"
#include "cli/recorder/FirstSetup.h"
#include "cli/recorder/RecorderCommands.h"
#include "core/base/Text.h"
#include "platform/linux/LogindMonitor.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QDBusConnection>
#include <QLoggingCategory>
#include <cstdio>

namespace tidemark::recorderProgram {

namespace {

/// Qt wants the arguments of main() for as long as its application lives.
struct Application {
    int count = 1;
    std::string name = "tidemark";
    char* names[2] = {name.data(), nullptr};
    QCoreApplication qt{count, names};
};

void logToStandardError(QtMsgType, const QMessageLogContext&, const QString& message) {
    std::fprintf(stderr, "%s\n", oneLine(message.toStdString()).c_str());
}

/// A request of another process, carried out by the recorder.
QCoro::Task<ControlAnswer> answer(Recorder& recorder, ControlRequest request,
                                  std::stop_token stop) {
    RecorderArguments arguments = parseRecorderArguments(request.arguments);
    recorderCommands::Circumstances circumstances{.colour = request.colour,
                                                  .directory = request.directory,
                                                  .isRunning = true,
                                                  .stop = std::move(stop)};
    std::string output = co_await recorderCommands::carryOut(recorder, std::move(arguments),
                                                             std::move(circumstances));
    ControlAnswer answer;
    answer.output = std::move(output);
    co_return answer;
}

/// The error of a coroutine that nobody awaits is kept for who runs the event loop.
QCoro::Task<void> carryOutHere(Recorder& recorder, RecorderArguments arguments,
                               recorderCommands::Circumstances circumstances, std::string& output,
                               std::exception_ptr& failure) {
    try {
        std::string result = co_await recorderCommands::carryOut(recorder, std::move(arguments),
                                                                 std::move(circumstances));
        output = std::move(result);
    } catch (...) {
        failure = std::current_exception();
    }
    QCoreApplication::quit();
}

std::string carryOutAlone(const RecorderArguments& arguments) {
    const Interruption interruption;
    const Application application;
    // The answer says it all.
    QLoggingCategory::setFilterRules("app.tidemark.captures=false");
    Recorder recorder(RecorderPlaces::current());
    std::string output;
    std::exception_ptr failure;
    const std::stop_callback quit(interruption.token(), [] {
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    });
    QMetaObject::invokeMethod(
        qApp,
        [&] {
            recorder.tasks().start(carryOutHere(
                recorder, arguments,
                {.colour = console::useColour(), .directory = std::filesystem::current_path()},
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

QCoro::Task<void> startRecording(Recorder& recorder, std::string setup) {
    if (!setup.empty())
        co_await recorderCommands::setUp(recorder, std::move(setup));
    co_await recorder.model().start();
    if (const auto& error = *recorder.model().state().error)
        std::fprintf(stderr, "%s\n", oneLine(*error).c_str());
}

} // namespace

int run(const std::string& setup) {
    const Interruption interruption;
    const Application application;
    qInstallMessageHandler(logToStandardError);
    Recorder recorder(RecorderPlaces::current());
    if (const auto problem = recorder.preferences().problem())
        std::fprintf(stderr, "%s\n", oneLine(*problem).c_str());
    const std::string choice = setup.empty() ? firstSetup(recorder) : setup;

    ControlServer server([&recorder](ControlRequest request, std::stop_token stop) {
        return answer(recorder, std::move(request), std::move(stop));
    });
    server.listen(recorder.places().socket, recorder.lock());
    const LogindMonitor sleepAndSession(QDBusConnection::systemBus(), recorder.workspace());
    const std::stop_callback quit(interruption.token(), [] {
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    });
    QMetaObject::invokeMethod(
        qApp, [&] { recorder.tasks().start(startRecording(recorder, choice)); },
        Qt::QueuedConnection);
    QCoreApplication::exec();
    recorder.model().stopAutomaticCaptures();
    recorder.tasks().drain();
    return 0;
}

int carryOut(const RecorderArguments& arguments, const std::vector<std::string>& line) {
    const RecorderPlaces places = RecorderPlaces::current();
    const auto answered =
        ControlClient::ask(places.socket, {.arguments = line,
                                           .colour = console::useColour(),
                                           .directory = std::filesystem::current_path()});
    if (answered) {
        console::print(answered->output);
        if (!answered->error.empty())
            throw Error(answered->error);
        return static_cast<int>(answered->status);
    }
    console::print(arguments.isReading()
                       ? recorderCommands::read(places, arguments, console::useColour())
                       : carryOutAlone(arguments));
    return 0;
}

} // namespace tidemark::recorderProgram
