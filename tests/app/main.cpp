#include <QCoreApplication>

#include <gtest/gtest.h>

/// Read by LeakSanitizer. The libraries keep the messages that were under way when the process
/// ends, and libcrypto what it has for each thread, when a thread of the pool ends at the same
/// time. (The tests of core, which digest as well, have no such exception.)
// The name is the sanitizer's. NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libcrypto.so\nleak:libdbus-1.so\nleak:libQt6DBus.so\nleak:libwayland-client.so\n";
}
// NOLINTEND(bugprone-reserved-identifier)

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
