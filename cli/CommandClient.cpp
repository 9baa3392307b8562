#include "cli/CommandClient.h"

#include "app/control/ControlClient.h"
#include "cli/Console.h"
#include "cli/OutputFile.h"
#include "cli/QtApplication.h"
#include "core/base/Files.h"
#include "core/base/FreeDescriptors.h"
#include "core/base/Text.h"
#include "recorder/CommandRequests.h"
#include "recorder/Interruption.h"
#include "recorder/Recorder.h"
#include "recorder/StoredRecords.h"

#include <QCoroTask>
#include <QLoggingCategory>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <thread>

#include <unistd.h>

namespace tidemark::commandClient {

namespace {

/// How many pauses a command makes while it waits for the data folder, before it gives up: five
/// seconds in all.
constexpr int folderAttempts = 50;
constexpr std::chrono::milliseconds folderPause{100};
/// How many times a command that only a running program can carry out looks for one while another
/// process has the data folder. With the pauses in between, that takes as long as the program with
/// windows needs at most to lock the folder.
constexpr int programAttempts = 150;
/// When a recorder hands over, the data folder is free for less than this many pauses.
constexpr int mostFreePauses = 3;

/// Asks a question on the terminal. Throws `Error` when there is none.
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

/// A command to be carried out, with its options and the folders to use.
struct PendingCommand {
    const Command& command;
    std::unique_ptr<Invocation> invocation;
    RecorderPlaces places = RecorderPlaces::current();
};

/// The answer of the running recorder; absent when none is running, and when it ends without an
/// answer to a command that only reads.
std::optional<ControlAnswer> askRecorder(const PendingCommand& pending) {
    ControlClient::Patience patience;
    if (pending.invocation->isReading())
        patience.answer = std::chrono::minutes(1);
    try {
        return ControlClient::ask(
            pending.places.sockets,
            commandRequests::request(pending.command, *pending.invocation, console::useColour()),
            patience);
    } catch (const ControlClient::RecorderEnded&) {
        if (pending.invocation->isReading())
            return std::nullopt;
        throw;
    }
}

/// The answer of a program that is about to begin, or of the one that takes over from a recorder
/// that ends: either has locked the data folder for a moment before it listens. Absent when no
/// process holds the folder for `mostFreePauses` pauses in a row, and after fifteen seconds.
std::optional<ControlAnswer> awaitProgram(const PendingCommand& pending) {
    int freePauses = 0;
    for (int attempt = 0; attempt < programAttempts && freePauses < mostFreePauses; ++attempt) {
        std::this_thread::sleep_for(folderPause);
        if (auto answer = askRecorder(pending))
            return answer;
        const bool isTaken = FolderLock::isTaken(pending.places.files.directory);
        freePauses = isTaken ? 0 : freePauses + 1;
    }
    return std::nullopt;
}

std::optional<ControlAnswer> answerFromStored(const PendingCommand& pending) {
    if (!pending.invocation->isReading())
        return std::nullopt;
    StoredRecords stored(pending.places, console::useColour());
    auto answer = pending.invocation->answerFromStored(stored);
    if (!answer)
        return std::nullopt;
    for (const auto& problem : answer->problems)
        console::complain(problem);
    return ControlAnswer{0, std::move(answer->text), {}};
}

/// No one awaits this coroutine, so its exception is passed to `failure`.
QCoro::Task<void> carryOutHere(CommandContext context, std::unique_ptr<Invocation> invocation,
                               std::string& output, std::exception_ptr& failure) {
    try {
        std::string result =
            co_await commandRequests::carryOut(std::move(context), std::move(invocation));
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

/// Prints a problem with the settings, unless the error of the command includes it. If the command
/// failed, only a problem with reading the settings is printed: a problem with writing them has the
/// same cause as the error.
void reportProblem(const JsonPreferences& settings, const std::exception_ptr& failure) {
    const auto problem = failure ? settings.loadingProblem() : settings.problem();
    if (problem && !textOf(failure).contains(*problem))
        std::fprintf(stderr, "%s\n", oneLine(*problem).c_str());
}

/// Locks the data folder, waiting for another command to release it. If a recorder was started
/// meanwhile, returns its answer. Throws `FolderTaken` when the folder does not become free.
std::optional<ControlAnswer> takeFolder(std::optional<Recorder>& recorder,
                                        const PendingCommand& pending) {
    for (int attempt = 0;; ++attempt) {
        try {
            recorder.emplace(pending.places);
            return std::nullopt;
        } catch (const FolderTaken&) {
            if (attempt == folderAttempts)
                throw;
        }
        std::this_thread::sleep_for(folderPause);
        if (auto answer = askRecorder(pending))
            return answer;
    }
}

ControlAnswer carryOutAlone(PendingCommand pending) {
    const Interruption interruption(Interruption::AfterStop::ends);
    requireFreeDescriptors(QtApplication::neededDescriptors);
    const QtApplication application;
    // Problems are printed once, below or as the error of the command, and not logged as well.
    QLoggingCategory::setFilterRules("*.debug=false\n*.info=false\n*.warning=false\n"
                                     "app.tidemark.captures=false");
    std::optional<Recorder> taken;
    if (auto answer = takeFolder(taken, pending))
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
            recorder.tasks().start(carryOutHere({recorder, console::useColour(), false},
                                                std::move(pending.invocation), output, failure));
        },
        Qt::QueuedConnection);
    QCoreApplication::exec();
    recorder.model().stopAutomaticCaptures();
    // Whether the memory history could be saved is known only after its writer has ended.
    recorder.tasks().start(recorder.memoryHistory().writer());
    recorder.tasks().drain();
    reportProblem(recorder.preferences(), failure);
    if (interruption.token().stop_requested())
        throw Error("The command was interrupted.");
    if (failure)
        std::rethrow_exception(failure);
    if (const auto problem = recorder.memoryHistory().failure())
        console::complain(*problem);
    return {0, std::move(output), {}};
}

ControlAnswer answered(PendingCommand pending) {
    if (auto answer = askRecorder(pending))
        return *std::move(answer);
    if (pending.invocation->needsProgram())
        if (auto answer = awaitProgram(pending))
            return *std::move(answer);
    if (auto answer = answerFromStored(pending))
        return *std::move(answer);
    return carryOutAlone(std::move(pending));
}

} // namespace

int carryOut(const Command& command, std::unique_ptr<Invocation> invocation) {
    const auto question = invocation->question();
    if (question && !confirmed(*question))
        return 0;
    if (const auto status = invocation->runHere())
        return *status;
    auto output = invocation->outputFile();
    if (output)
        output = writableFile(*output);
    const ControlAnswer answer = answered({command, std::move(invocation)});
    if (answer.error.empty() && output)
        replaceFile(*output, answer.output);
    else
        console::print(answer.output);
    if (!answer.error.empty())
        throw Error(answer.error);
    return static_cast<int>(answer.status);
}

} // namespace tidemark::commandClient
