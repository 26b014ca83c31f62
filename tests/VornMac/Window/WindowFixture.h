#pragma once

#include "VornMac/System/Appearance.h"
#include "VornMac/View/ScreenModel.h"
#include "tests/VornMac/Model/ModelFixture.h"
#include "tests/VornMac/Window/DrawnText.h"
#include "tests/VornMac/Window/Reading.h"

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
/// By default motion is reduced, so that what is shown is shown at once. A screen reader listens.
/// One at a time. Threads: one, with a QGuiApplication.
class WindowFixture {
public:
    enum class Motion { reduced, full };

    explicit WindowFixture(Motion motion = Motion::reduced);
    ~WindowFixture();
    WindowFixture(WindowFixture&&) = delete;

    ModelFixture model;

    QQuickWindow& window() { return *window_; }
    ScreenModel& screenModel() { return *screenModel_; }
    /// The singleton Theme of Vorn.Components.
    QObject& theme();

    /// Runs the window and the model's main thread until neither has anything to do now. What waits in the background
    /// goes on waiting, see `ModelFixture::runAll`.
    void settle();

    // What is shown. An item is shown when it and all it lies in are visible.

    /// The first shown item whose accessible name is `name`, null when there is none.
    QQuickItem* named(const QString& name) const;
    /// The accessible names of what is shown, in the order of the screen's structure; no empty ones.
    std::vector<std::string> names() const;
    bool shows(const QString& name) const { return named(name) != nullptr; }
    /// Whether the control `name` can be used; fails the test if it is not shown.
    bool isEnabled(const QString& name) const;

    /// What is drawn, and what a screen reader comes to, as tests compare them.
    std::vector<std::string> words() { return wordsOf(drawnTexts(*window_)); }
    std::vector<Read> reading() { return readingOf(*window_); }
    std::vector<std::string> spoken() { return spokenLines(reading()); }
    /// What a screen reader was told to say since this was last asked.
    std::vector<std::string> announced() { return std::exchange(announced_, {}); }

    /// The ways to use a control. Each settles.

    /// Clicks the middle of the control `name` with the mouse.
    void click(const QString& name);
    void clickAt(QPointF place);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Gives the control `name` the keyboard's focus and presses `key`.
    void pressOn(const QString& name, Qt::Key key);
    /// As a screen reader presses the control `name`, or ticks it.
    void pressByReader(const QString& name);
    /// The accessible name of what has the keyboard's focus; empty if nothing that can be used has.
    std::string focused() const;

    QImage picture();
    /// Lays everything out for the window's present size, without a picture.
    void lay();

    /// What was written to the log of Qt and QML since the fixture was made; a test ends with nothing in it.
    const std::vector<std::string>& warnings() const { return warnings_; }

private:
    void makeWindow();
    QQuickItem* expect(const QString& name) const;
    void noteAnnouncement(QObject* item, const QString& text);

    std::vector<std::string> announced_;
    QMetaObject::Connection announcements_;
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
