#include <QApplication>
#include <QIcon>
#include <QStandardPaths>

#include <gtest/gtest.h>

/// Off the screen, unless the environment says where.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication application(argc, argv);
    QIcon::setThemeSearchPaths(QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                                         QStringLiteral("icons"),
                                                         QStandardPaths::LocateDirectory));
    return RUN_ALL_TESTS();
}
