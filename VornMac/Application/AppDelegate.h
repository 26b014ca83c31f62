#pragma once

#include <functional>

#include <QObject>

namespace vorn {

/// Makes the process a regular application, brings it to the front once it has started, and ends it with its last
/// window. Threads: the main one.
class AppDelegate final : public QObject {
public:
    /// `quit` ends the application, and with it any upload.
    explicit AppDelegate(std::function<void()> quit);

    /// Call it once there is an application, before its first window is shown.
    static void didFinishLaunching();

    /// Sets the windows' icon, for desktops that do not find the installed one. On a Mac the bundle has the icon, and
    /// none is built in. Call it after the first frame: reading images takes time.
    static void didShowWindow();
};

} // namespace vorn
