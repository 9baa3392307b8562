#include "recorder/RecorderLog.h"

#include "core/base/Text.h"
#include "core/presentation/SystemWords.h"
#include "recorder/LogWriter.h"

#include <QLoggingCategory>
#include <csignal>
#include <cstdlib>

#include <unistd.h>

namespace tidemark::recorderLog {

namespace {

/// The prefix from which the system journal reads the level of a line (sd-daemon(3)).
const char* journalLevel(QtMsgType type) {
    static const bool toJournal = ::getenv("JOURNAL_STREAM") && ::isatty(STDERR_FILENO) == 0;
    if (!toJournal)
        return "";
    return type == QtCriticalMsg || type == QtFatalMsg ? "<3>"
           : type == QtWarningMsg                      ? "<4>"
                                                       : "<6>";
}

void write(QtMsgType type, const QMessageLogContext&, const QString& message) {
    // Not destroyed, because threads log until the process ends.
    static auto* const log = new LogWriter(STDERR_FILENO);
    log->write(journalLevel(type) + oneLine(systemWords::shown(message.toStdString())));
}

} // namespace

void start() {
    std::signal(SIGPIPE, SIG_IGN);
    qInstallMessageHandler(write);
}

} // namespace tidemark::recorderLog
