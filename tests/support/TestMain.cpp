#include <gtest/gtest.h>

#include <QApplication>

/// Every test program runs inside a real application object, so that timers, ports and widgets
/// work as they do in the program.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", TEST_PLATFORM);
    qputenv("LC_ALL", "C.UTF-8");  // numbers on the screen look the same everywhere
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
