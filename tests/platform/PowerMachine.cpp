#include "tests/platform/PowerMachine.h"

#include <QProcessEnvironment>
#include <filesystem>
#include <stdexcept>

namespace tidemark::test {

using namespace Qt::StringLiterals;

namespace {

constexpr const char* wrapper = "/usr/bin/umockdev-wrapper";

} // namespace

PowerMachine::PowerMachine(const PrivateBus& bus) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SYSTEM_BUS_ADDRESS"_s, bus.address());
    environment.insert(u"UPOWER_HISTORY_DIR"_s, QString::fromStdString(history.path().native()));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(
        QLatin1String(wrapper),
        {u"/usr/bin/python3"_s, QStringLiteral(TIDEMARK_PLATFORM_TESTS) + u"/power_supplies.py"_s});
}

PowerMachine::~PowerMachine() {
    process.closeWriteChannel();
    process.waitForFinished();
}

std::string PowerMachine::missing() {
    for (const char* program :
         {wrapper, "/usr/libexec/upowerd", "/usr/libexec/power-profiles-daemon"})
        if (!std::filesystem::exists(program))
            return std::string(program) + " is not installed";
    if (QProcess::execute(u"/usr/bin/python3"_s,
                          {u"-c"_s, u"import gi; gi.require_version('UMockdev', '1.0')"_s})
        != 0)
        return "Python has no binding of umockdev";
    return {};
}

void PowerMachine::carryOut(const std::string& command) {
    process.write((command + "\n").c_str());
    while (!process.canReadLine())
        if (!process.waitForReadyRead())
            throw std::runtime_error("not carried out: " + command);
    process.readLine();
}

} // namespace tidemark::test
