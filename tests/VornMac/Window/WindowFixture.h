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

    /// Runs the window and the model's main thread until both are idle. Does not run background work: see
    /// `ModelFixture::runAll`.
    void settle();

    // Items that are shown: visible, with all their ancestors.

    /// The first shown item whose accessible name is `name`; null if there is none.
    QQuickItem* named(const QString& name) const;
    /// The accessible names of shown items, in the order of the structure; no empty ones.
    std::vector<std::string> names() const;
    bool shows(const QString& name) const { return named(name) != nullptr; }
    /// Whether the control `name` can be used; fails the test if it is not shown.
    bool isEnabled(const QString& name) const;

    /// The drawn texts, and the lines of a screen reader, for comparing.
    std::vector<std::string> words() { return wordsOf(drawnTexts(*window_)); }
    std::vector<Read> reading() { return readingOf(*window_); }
    std::vector<std::string> spoken() { return spokenLines(reading()); }
    /// The announcements since the last call.
    std::vector<std::string> announced() { return std::exchange(announced_, {}); }

    /// Ways to use a control. Each ends with `settle`.

    /// Clicks the middle of the control `name` with the mouse.
    void click(const QString& name);
    void clickAt(QPointF place);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Gives the control `name` the keyboard's focus and presses `key`.
    void pressOn(const QString& name, Qt::Key key);
    /// Presses the control `name`, or ticks it, as a screen reader does.
    void pressByReader(const QString& name);
    /// The accessible name of the focused control; empty if no usable one has the focus.
    std::string focused() const;

    QImage picture();
    /// Lays everything out for the window's current size.
    void lay();

    /// Qt's and QML's log since the fixture was made; it must be empty at the end of a test.
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

/// Every item below `root`, `root` first, in the order of the structure, that `keeps` accepts; a refused item is left
/// out with all its children.
std::vector<QQuickItem*> itemsBelow(QQuickItem* root, const std::function<bool(QQuickItem*)>& keeps);
/// The name of `item` for a screen reader; empty if readers skip it.
QString accessibleName(QQuickItem* item);

} // namespace vorn::testing
