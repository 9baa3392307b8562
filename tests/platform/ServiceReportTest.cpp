#include "tests/app/support/Await.h"
#include "tests/platform/PrivateBus.h"
#include "tests/support/Contains.h"
#include "tests/support/TemporaryFolder.h"

#include <QProcess>
#include <QProcessEnvironment>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

TEST(ServiceReport, ReportsWhichServicesAnswer) {
    const test::TemporaryFolder folder;
    const test::PrivateBus bus;
    auto service = bus.connect(u"service"_s);
    for (const auto& name : {u"org.bluez"_s, u"org.freedesktop.UPower.PowerProfiles"_s})
        ASSERT_TRUE(service.registerService(name));
    auto variables = QProcessEnvironment::systemEnvironment();
    const QString root = QString::fromStdString(folder.path().native());
    for (const auto& name : {u"HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_CONFIG_HOME"_s})
        variables.insert(name, root);
    variables.insert(u"DBUS_SYSTEM_BUS_ADDRESS"_s, bus.address());
    variables.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
    QProcess doctor;
    doctor.setProcessEnvironment(variables);
    doctor.start(QString::fromUtf8(TIDEMARK_PROGRAM), {u"doctor"_s, u"--json"_s});
    test::until([&] { return doctor.state() == QProcess::NotRunning; });
    const std::string report = doctor.readAllStandardOutput().toStdString();
    for (const char* state :
         {R"("name":"BlueZ","use":"Bluetooth","state":"answers")",
          R"("name":"Power profiles","use":"low power mode","state":"answers")",
          R"("name":"UPower","use":"power source and battery","state":"not running")",
          R"("name":"Desktop portal","use":"appearance","state":"no message bus")"})
        EXPECT_TRUE(test::contains(report, state)) << report;
}
