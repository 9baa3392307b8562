#include "recorder/RecorderLog.h"

#include "core/base/Text.h"
#include "core/presentation/SystemWords.h"
#include "recorder/LogWriter.h"
#include "recorder/PublicText.h"

#include <QLoggingCategory>
#include <csignal>
#include <cstdlib>

#include <sys/stat.h>
#include <unistd.h>

namespace tidemark::recorderLog {

namespace {

/// The prefix from which the system journal reads the level of a line (sd-daemon(3)).
const char* journalLevel(QtMsgType type) {
    return type == QtCriticalMsg || type == QtFatalMsg ? "<3>"
           : type == QtWarningMsg                      ? "<4>"
                                                       : "<6>";
}

std::string lineOf(QtMsgType type, const std::string& message) {
    static const bool toJournal = isJournal(STDERR_FILENO, std::getenv("JOURNAL_STREAM"));
    if (!toJournal)
        return systemWords::shown(message);
    // Not destroyed, because threads log until the process ends.
    static const auto* const names = new std::vector(publicText::privateNames());
    return journalLevel(type) + publicText::of(systemWords::shown(message), *names);
}

void write(QtMsgType type, const QMessageLogContext&, const QString& message) {
    static auto* const log = new LogWriter(STDERR_FILENO);
    // A name in a message may hold a line feed or an escape sequence.
    log->write(oneLine(lineOf(type, message.toStdString())));
}

} // namespace

bool isJournal(int stream, const char* announced) {
    struct stat status{};
    if (!announced || ::fstat(stream, &status) != 0)
        return false;
    return announced == std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
}

void start() {
    std::signal(SIGPIPE, SIG_IGN);
    qInstallMessageHandler(write);
}

} // namespace tidemark::recorderLog
