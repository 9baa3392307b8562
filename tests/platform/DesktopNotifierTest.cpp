#include "platform/linux/DesktopNotifier.h"

#include "tests/app/support/Await.h"
#include "tests/platform/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusMessage>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

const QString name = u"org.freedesktop.Notifications"_s;
const QString path = u"/org/freedesktop/Notifications"_s;

struct DesktopNotifierTest : testing::Test {
    test::PrivateBus home;
    QDBusConnection bus = home.connect(u"tested"_s);
    test::MockService service{home, bus, u"notification_daemon"_s, name};
    int activations = 0;

    /// All calls of Notify so far, each as "id of the replaced notification|title|body".
    QStringList sent() {
        QStringList calls;
        auto call = QDBusMessage::createMethodCall(name, path, u"org.freedesktop.DBus.Mock"_s,
                                                   u"GetMethodCalls"_s);
        call << u"Notify"_s;
        const auto reply = bus.call(call);
        const auto argument = reply.arguments().value(0).value<QDBusArgument>();
        argument.beginArray();
        while (!argument.atEnd()) {
            qulonglong time = 0;
            QVariantList values;
            argument.beginStructure();
            argument >> time >> values;
            argument.endStructure();
            calls.push_back(values.value(1).toString() + u"|"_s + values.value(3).toString()
                            + u"|"_s + values.value(4).toString());
        }
        argument.endArray();
        return calls;
    }
    DesktopNotifications::Notification notification(const char* title, const char* body) {
        return {.title = title, .body = body, .activated = [this] { ++activations; }};
    }
    void emitted(const QString& signal, const QString& signature, const QVariantList& arguments) {
        service.control(path, u"EmitSignal"_s,
                        {name, signal, signature, QVariant::fromValue(arguments)});
        test::settle();
    }
    void expectSent(qsizetype count) {
        test::until([&] {
            test::settle();
            return sent().size() == count;
        });
    }
};

} // namespace

TEST_F(DesktopNotifierTest, ReplacesTheLastNotificationAndReportsAClick) {
    service.start();
    DesktopNotifier notifier(bus);
    notifier.show(notification("First", "a <b> & c"));
    expectSent(1);
    EXPECT_EQ(sent().front(), u"0|First|a &lt;b&gt; &amp; c"_s);
    notifier.show(notification("Second", "d"));
    expectSent(2);
    EXPECT_EQ(sent().back(), u"1|Second|d"_s);
    emitted(u"ActionInvoked"_s, u"us"_s, {7u, u"default"_s});
    emitted(u"ActionInvoked"_s, u"us"_s, {1u, u"other"_s});
    EXPECT_EQ(activations, 0) << "another notification or action";
    emitted(u"ActionInvoked"_s, u"us"_s, {1u, u"default"_s});
    test::until([&] { return activations == 1; });
    emitted(u"NotificationClosed"_s, u"uu"_s, {1u, 2u});
    test::settle();
    notifier.show(notification("Third", ""));
    expectSent(3);
    EXPECT_EQ(sent().back(), u"0|Third|"_s) << "the last one is not shown any more";
}

TEST_F(DesktopNotifierTest, ShowsNothingAndStartsNothingWithoutAService) {
    DesktopNotifier notifier(bus);
    notifier.show(notification("Lost", ""));
    test::settle();
    notifier.show(notification("Lost", ""));
    service.start();
    test::until([&] {
        notifier.show(notification("Shown", ""));
        test::settle();
        return !sent().isEmpty();
    });
    EXPECT_TRUE(sent().front().contains(u"Shown"_s));
}
