// Test runner of the play suite: a GUI application object for the tests that paint with Qt.
#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Test discovery runs the binary without the test environment; paint off screen there too.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
