#include "VornMac/Application/CommandLine.h"
#include "VornMac/Application/VornMacApp.h"

#include <cstdio>

#include <QGuiApplication>

/// The application with a window that the test describes in QML: the file is the only argument.
int main(int argc, char** argv)
{
    vorn::CommandLine line(argc, argv);
    vorn::QuitWatch quitWatch;
    vorn::VornMacApp::describe();
    const QGuiApplication application(line.count(), line.values());
    try {
        const QUrl source = QUrl::fromLocalFile(QString::fromStdString(line.unknown().value_or("")));
        return vorn::VornMacApp(quitWatch, line.defaults(), source).run();
    } catch (const vorn::WindowError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
