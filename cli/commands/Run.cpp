#include "cli/FirstSetup.h"
#include "cli/QtApplication.h"
#include "cli/TerminalCommands.h"
#include "core/base/FreeDescriptors.h"
#include "recorder/FirstFolders.h"
#include "recorder/Interruption.h"
#include "recorder/RecorderLog.h"
#include "recorder/RunningRecorder.h"
#include "recorder/TypedInvocation.h"

#include <QLoggingCategory>

namespace tidemark {

namespace {

struct Options {
    std::optional<SetupChoice> setup;

    static constexpr auto fields() {
        return std::tuple{Option{
            "setup", &Options::setup,
            "On the first start, monitor the recommended folders that can be read, or none"}};
    }
};

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

/// Records until SIGINT or SIGTERM.
int run(const Options& options) {
    const Interruption interruption(Interruption::AfterStop::ends);
    requireFreeDescriptors(QtApplication::neededDescriptors);
    const QtApplication application;
    recorderLog::start();
    Recorder recorder(RecorderPlaces::current());
    // Reports settings that were damaged and set aside, or could not be read.
    if (const auto problem = recorder.preferences().problem())
        qWarning("%s", problem->c_str());
    const auto chosen = firstSetup(recorder, options.setup, interruption.token());
    if (interruption.token().stop_requested())
        return 0;

    const RunningRecorder running(recorder);
    recorder.requests().handOver = [] { QCoreApplication::quit(); };
    const std::stop_callback quit(interruption.token(), [] {
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    });
    QMetaObject::invokeMethod(
        qApp, [&] { recorder.tasks().start(startRecording(recorder, chosen)); },
        Qt::QueuedConnection);
    QCoreApplication::exec();
    return 0;
}

} // namespace

Command commands::run() {
    return makeCommand<Options, &tidemark::run>({
        .name = "run",
        .group = CommandGroup::recording,
        .summary = "Record in the foreground until Control-C",
    });
}

} // namespace tidemark
