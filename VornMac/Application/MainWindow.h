#pragma once

#include "VornMac/Application/GeometryKeeper.h"

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include <QQmlEngine>
#include <QQuickWindow>
#include <QUrl>
#include <QVariantMap>

namespace vorn {

/// A window that cannot be made: its file, or a module that it imports, is missing or wrong. `what()` has a line for
/// each fault.
class WindowError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The application's one window and the engine of its screens. Threads: the main one.
class MainWindow {
public:
    /// The type `Main` of the module `Vorn`.
    static QUrl standardSource();

    /// Creates the window that `source` describes with these property values, without showing it. `defaults` and what
    /// the properties point to must outlive this object; `quit` is called when the user asks to quit. Throws
    /// `WindowError`.
    MainWindow(const QUrl& source, const QVariantMap& properties, UserDefaults& defaults,
               const std::function<void()>& quit);
    ~MainWindow();
    MainWindow(MainWindow&&) = delete;

    QQuickWindow& window() noexcept { return *window_; }

    /// Calls `onFirstFrame` once, on this thread, when the window is visible.
    void show(const std::function<void()>& onFirstFrame);
    /// Raises the window, also when it was minimised. A Wayland desktop allows that only with an
    /// `activationToken` that it has given out.
    void bringToFront(const std::string& activationToken = {});
    /// Asks the user to look here, once, unless they do.
    void askForAttention();
    /// Hides the window for good and saves where it was.
    void dismiss();

private:
    QQmlEngine engine_;
    std::unique_ptr<QQuickWindow> window_; ///< goes before its engine
    std::unique_ptr<GeometryKeeper> geometry_;
};

} // namespace vorn
