// Test runner of the play suite: a GUI application object for the tests that paint with Qt.
#include "core/generator/generator.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Test discovery runs the binary without the test environment; paint off screen there too.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    // A generator that can no longer make a puzzle gives up after this many builds, so that
    // the tests that start a new puzzle fail instead of waiting for it without end.
    constexpr int kBuildBound = 40;
    tallyon::SetBuildBound(kBuildBound);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
