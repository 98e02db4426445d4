#include <gtest/gtest.h>

#include <QApplication>

/// Every test program runs inside a real application object, so that timers, ports and widgets
/// work as they do in the program.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", TEST_PLATFORM);
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
