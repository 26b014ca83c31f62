#include <cstdlib>

#include <gmock/gmock.h>

#include <QGuiApplication>
#include <QTemporaryDir>

/// Runs the tests in an application without a screen. Settings of Qt in the environment are kept.
int main(int argc, char** argv)
{
    ::testing::InitGoogleMock(&argc, argv);
    const QTemporaryDir runtime; // Qt warns without one, and a warning fails a test of the window
    setenv("XDG_RUNTIME_DIR", runtime.path().toUtf8().constData(), 0);
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("QT_QUICK_BACKEND", "software", 0);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
