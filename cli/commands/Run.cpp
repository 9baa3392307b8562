#include "cli/FirstSetup.h"
#include "cli/QtApplication.h"
#include "cli/TerminalCommands.h"
#include "core/base/FreeDescriptors.h"
#include "core/system/ThreadHeaps.h"
#include "recorder/FirstFolders.h"
#include "recorder/Interruption.h"
#include "recorder/RecorderLog.h"
#include "recorder/RunningRecorder.h"
#include "recorder/TypedInvocation.h"

#include <QLoggingCategory>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <stop_token>

namespace tidemark {

namespace {

struct RunOptions {
    std::optional<SetupChoice> setup;
    bool wait = false;

    static constexpr auto fields() {
        return std::tuple{
            Option{"setup", &RunOptions::setup,
                   "On the first start, monitor the recommended folders that can be read, or none"},
            Option{"wait", &RunOptions::wait,
                   "While another program records, wait until it ends; and exit with status 75 "
                   "when a program with windows takes over"}};
    }
};

/// The pause between two attempts to lock the data folder while another process has it.
constexpr std::chrono::seconds folderPause{5};
/// EX_TEMPFAIL of sysexits.h: whoever started the program is to start it again.
constexpr int leftToAnother = 75;

/// Makes the recorder. Throws `FolderTaken` when another process has the data folder; with `wait`,
/// waits instead until the folder is free or a stop is requested.
void takeFolder(std::optional<Recorder>& recorder, const RunOptions& options,
                const std::stop_token& stop) {
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any never;
    for (bool isFirst = true; !recorder && !stop.stop_requested(); isFirst = false) {
        try {
            recorder.emplace(RecorderPlaces::current());
        } catch (const FolderTaken& taken) {
            if (!options.wait)
                throw;
            if (isFirst)
                qInfo("%s Recording starts when it ends.", taken.what());
            never.wait_for(lock, stop, folderPause, [] { return false; });
        }
    }
}

QCoro::Task<void> startRecording(Recorder& recorder,
                                 std::optional<std::vector<RecommendedFolder>> chosen) {
    try {
        if (chosen)
            co_await firstFolders::choose(recorder, *std::move(chosen));
    } catch (const std::exception& error) {
        // Continue, since recording everything else needs no folders.
        qCritical("The folders to monitor could not be set up: %s", error.what());
    }
    if (const auto& folders = recorder.model().folderAccess();
        folders.message() && !folders.messageIsSuccess())
        qWarning("%s", folders.message()->c_str());
    // `start` logs its own failures.
    co_await recorder.model().start();
}

/// Records until SIGINT or SIGTERM, or until a program with windows takes over.
int run(const RunOptions& options) {
    limitThreadHeaps();
    const Interruption interruption(Interruption::AfterStop::ends);
    requireFreeDescriptors(QtApplication::neededDescriptors);
    const QtApplication application;
    recorderLog::start();
    std::optional<Recorder> taken;
    takeFolder(taken, options, interruption.token());
    if (!taken)
        return 0;
    Recorder& recorder = *taken;
    // Reports settings that were damaged and set aside, or could not be read.
    if (const auto problem = recorder.preferences().problem())
        qWarning("%s", problem->c_str());
    const auto chosen = firstSetup(recorder, options.setup, interruption.token());
    if (interruption.token().stop_requested())
        return 0;

    const RunningRecorder running(recorder);
    bool isHandedOver = false;
    recorder.requests().handOver = [&] {
        isHandedOver = true;
        QCoreApplication::quit();
    };
    const std::stop_callback quit(interruption.token(), [] {
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    });
    QMetaObject::invokeMethod(
        qApp, [&] { recorder.tasks().start(startRecording(recorder, chosen)); },
        Qt::QueuedConnection);
    QCoreApplication::exec();
    return isHandedOver && options.wait ? leftToAnother : 0;
}

} // namespace

Command commands::run() {
    return makeCommand<RunOptions, &tidemark::run>({
        .name = "run",
        .group = CommandGroup::recording,
        .summary = "Record in the foreground until Control-C",
    });
}

} // namespace tidemark
