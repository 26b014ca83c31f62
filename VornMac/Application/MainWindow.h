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

/// A window that cannot be made: its file, or a module that it imports, is missing or wrong. `what()` has one line for
/// each fault.
class WindowError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The application's one window and the engine of its screens. Threads: the main one.
class MainWindow {
public:
    /// The URL of the type `Main` in the QML module `Vorn`.
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
    /// Raises the window, even if it is minimised. A Wayland compositor requires an `activationToken` that it has
    /// issued.
    void bringToFront(const std::string& activationToken = {});
    /// Asks for the user's attention once, unless the window is the active one.
    void askForAttention();
    /// Hides the window for good and saves where it was.
    void dismiss();

private:
    QQmlEngine engine_;
    std::unique_ptr<QQuickWindow> window_; ///< destroyed before its engine
    std::unique_ptr<GeometryKeeper> geometry_;
};

} // namespace vorn
