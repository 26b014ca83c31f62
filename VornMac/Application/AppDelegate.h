#pragma once

#include <functional>

#include <QObject>

namespace vorn {

/// Makes the process a regular application in front of the others once it has started, and ends it with its last
/// window. Threads: the main one.
class AppDelegate final : public QObject {
public:
    /// `quit` ends the application, and with it any upload.
    explicit AppDelegate(std::function<void()> quit);

    /// Call it when there is an application, before its first window is shown.
    static void didFinishLaunching();

    /// Sets the windows' icon, for desktops that do not find the installed one. A Mac's application has its bundle's:
    /// there is none built in. Reading images takes its time, so call it when the first frame is there.
    static void didShowWindow();
};

} // namespace vorn
