#include "cli/FirstSetup.h"
#include "cli/Interruption.h"
#include "cli/QtApplication.h"
#include "cli/TerminalCommands.h"
#include "core/base/Text.h"
#include "recorder/FirstFolders.h"
#include "recorder/RunningRecorder.h"
#include "recorder/TypedInvocation.h"

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace tidemark {

namespace {

struct Options {
    std::optional<SetupChoice> setup;

    static constexpr auto fields() {
        return std::tuple{
            Option{"setup", &Options::setup,
                   "At a first start: monitor the recommended folders that can be read, or none"}};
    }
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

void report(const std::string& problem) {
    std::fprintf(stderr, "%s\n", oneLine(problem).c_str());
}

QCoro::Task<void> startRecording(Recorder& recorder,
                                 std::optional<std::vector<RecommendedFolder>> chosen) {
    if (chosen)
        co_await firstFolders::choose(recorder, *std::move(chosen));
    if (const auto& folders = recorder.model().folderAccess();
        folders.message() && !folders.messageIsSuccess())
        report(*folders.message());
    co_await recorder.model().start();
    if (const auto& error = *recorder.model().state().error)
        report(*error);
}

/// Records until SIGINT or SIGTERM.
int run(const Options& options) {
    const Interruption interruption;
    const QtApplication application;
    qInstallMessageHandler(logToStandardError);
    Recorder recorder(RecorderPlaces::current());
    // Damaged settings are reported by whoever set them aside.
    if (const auto problem = recorder.preferences().problem())
        report(*problem);
    const auto chosen = firstSetup(recorder, options.setup, interruption.token());
    if (interruption.token().stop_requested())
        return 0;

    const RunningRecorder running(recorder);
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
