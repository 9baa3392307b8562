#include "tests/platform/NetworkNamespace.h"

#include <QProcess>
#include <QProcessEnvironment>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace tidemark::test::networkNamespace {

using namespace Qt::StringLiterals;

namespace {

const QString mark = u"TIDEMARK_TEST_NAMESPACE"_s;

/// Runs a command in a new namespace and returns whether it succeeded.
bool run(const QStringList& command, QByteArray& output) {
    QStringList words{u"unshare"_s, u"--user"_s, u"--map-root-user"_s, u"--net"_s};
    if (::geteuid() == 0)
        words =
            QStringList{u"setpriv"_s, u"--reuid=65534"_s, u"--regid=65534"_s, u"--clear-groups"_s}
            + words;
    words += command;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(mark, u"1"_s);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    const QString first = words.takeFirst();
    process.start(first, words);
    const bool ended = process.waitForFinished(120'000);
    output = process.readAll();
    return ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

/// A path by which a child process can run this program even if it lies in a folder that only root
/// can enter: that of a descriptor, which the child inherits.
QString program() {
    static const int file = ::open("/proc/self/exe", O_RDONLY);
    return u"/proc/self/fd/%1"_s.arg(file);
}

} // namespace

bool isInside() {
    return qEnvironmentVariableIsSet("TIDEMARK_TEST_NAMESPACE");
}

std::optional<std::string> obstacle() {
    QByteArray output;
    if (run({u"ip"_s, u"link"_s}, output)
        && run({program(), u"--gtest_list_tests"_s, u"--gtest_filter=none"_s}, output))
        return std::nullopt;
    return "an ordinary user can't run this in a network namespace: " + output.toStdString();
}

std::string failure() {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    const QString filter = u"--gtest_filter=%1.%2"_s.arg(QLatin1String(test->test_suite_name()),
                                                         QLatin1String(test->name()));
    QByteArray output;
    if (run({program(), filter}, output))
        return {};
    return "in the namespace:\n" + output.toStdString();
}

void ip(const char* arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(u"ip"_s, QString::fromLatin1(arguments).split(u' '));
    process.waitForFinished();
    EXPECT_EQ(process.exitCode(), 0) << "ip " << arguments << "\n" << process.readAll().constData();
}

} // namespace tidemark::test::networkNamespace
