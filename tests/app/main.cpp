#include <QCoreApplication>

#include <gtest/gtest.h>

/// Read by LeakSanitizer. The libraries keep the messages that were under way when the
/// process ends.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libdbus-1.so\nleak:libQt6DBus.so\nleak:libwayland-client.so\n";
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
