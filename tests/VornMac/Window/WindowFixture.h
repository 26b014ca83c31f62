#pragma once

#include "VornMac/System/Appearance.h"
#include "VornMac/View/ScreenModel.h"
#include "tests/VornMac/Model/ModelFixture.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QImage>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>

namespace vorn::testing {

/// The real window, offscreen, on a model in virtual time. The window begins the model's first step, as in the program.
/// Motion is reduced, so that what is shown is shown at once; a test of motion turns it on again.
/// Threads: one, with a QGuiApplication (`windowTestApplication`).
class WindowFixture {
public:
    WindowFixture();
    ~WindowFixture();
    WindowFixture(WindowFixture&&) = delete;

    ModelFixture model;

    QQuickWindow& window() { return *window_; }
    ScreenModel& screenModel() { return *screenModel_; }

    /// Runs the model and the window until neither has anything to do now. Timers of the window go on.
    void settle();

    // What is shown. An item is shown when it and all it lies in are visible.

    /// The first shown item whose accessible name is `name`, null when there is none.
    QQuickItem* named(const QString& name) const;
    /// The accessible names of what is shown, in the order of the screen's structure; no empty ones.
    std::vector<std::string> names() const;
    bool shows(const QString& name) const { return named(name) != nullptr; }
    /// Whether the control `name` can be used; fails the test if it is not shown.
    bool isEnabled(const QString& name) const;

    /// Clicks the middle of the control `name` with the mouse, and settles.
    void click(const QString& name);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    QImage picture();

    /// What was written to the log of Qt and QML since the fixture was made; a test ends with nothing in it.
    const std::vector<std::string>& warnings() const { return warnings_; }

private:
    void makeWindow();

    std::vector<std::string> warnings_;
    std::unique_ptr<ScreenModel> screenModel_;
    std::unique_ptr<QQmlApplicationEngine> engine_;
    QQuickWindow* window_ = nullptr;
};

/// Every item below `root`, `root` first, in the order of the structure, that `keeps` wants; what it does not want is
/// left out with all below it.
std::vector<QQuickItem*> itemsBelow(QQuickItem* root, const std::function<bool(QQuickItem*)>& keeps);
/// What a screen reader calls `item`; empty where it is left out.
QString accessibleName(QQuickItem* item);

} // namespace vorn::testing
