#include <QCoreApplication>

#include <gtest/gtest.h>

/// LeakSanitizer calls this function to learn which leaks to ignore. The libraries of D-Bus and
/// Wayland do not free the messages that are under way when the process ends, and libcrypto does
/// not free the data of a pool thread that ends while the process ends. (The tests of core, which
/// also compute digests, need no such exception.)
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
