#include "bench/FirstFrame/ShownWindow.h"

#include "VornMac/Application/CommandLine.h"
#include "VornMac/Application/VornMacApp.h"

#include <chrono>
#include <cstdio>
#include <functional>

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQuickWindow>
#include <QTimer>
#include <sys/resource.h>

namespace vorn::bench {
namespace {

using namespace std::chrono_literals;

constexpr auto settling = 500ms;

constexpr const char* bareWindow = R"(
import QtQuick
Window {
    width: 1180
    height: 760
    Text { anchors.centerIn: parent; text: "Vorn" }
}
)";

long long mostMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
#ifdef __APPLE__
    return usage.ru_maxrss;
#else
    return usage.ru_maxrss * 1024LL;
#endif
}

void reportOn(QQuickWindow& window, const std::function<void()>& quit)
{
    const auto report = [quit] {
        std::printf("%lld\n", static_cast<long long>(std::chrono::steady_clock::now().time_since_epoch() / 1ns));
        QTimer::singleShot(settling, qGuiApp, [quit] {
            std::printf("%lld\n", mostMemory());
            std::fflush(stdout);
            quit();
        });
    };
    QObject::connect(&window, &QQuickWindow::frameSwapped, qGuiApp, report, Qt::SingleShotConnection);
}

int showBare()
{
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(bareWindow, {});
    const std::unique_ptr<QObject> made(component.create());
    auto& window = dynamic_cast<QQuickWindow&>(*made);
    reportOn(window, [] { QCoreApplication::exit(); });
    window.show();
    return QGuiApplication::exec();
}

int showApplication(QuitWatch& quitWatch, const CommandLine& line)
{
    VornMacApp app(quitWatch, line.defaults());
    reportOn(app.mainWindow().window(), [&app] { app.quit(); });
    return app.run();
}

} // namespace

int showWindow(bool bare, int argc, char** argv)
{
    CommandLine line(argc, argv);
    QuitWatch quitWatch;
    VornMacApp::describe();
    const QGuiApplication application(line.count(), line.values());
    return bare ? showBare() : showApplication(quitWatch, line);
}

} // namespace vorn::bench
