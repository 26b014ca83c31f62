#pragma once

#include <string>
#include <vector>

#include <QAccessible>
#include <QQuickItem>
#include <QQuickWindow>

namespace vorn::testing {

/// One thing that a screen reader comes to.
struct Read {
    QAccessible::Role role = QAccessible::NoRole;
    std::string name;
    std::string description;
    QAccessible::State state;
    std::vector<std::string> actions;
    int depth = 0;   ///< 0 just below the window
    int parent = -1; ///< its place in the reading, -1 for the window
    QQuickItem* item = nullptr;

    /// Qt gives texts an action too, to set the focus, which nothing comes of.
    bool isControl() const;
};

/// What a screen reader finds in `window`, in its order: what is shown, each before what it holds.
std::vector<Read> readingOf(QQuickWindow& window);

/// As a test prints and compares them: "Button: Continue", a check box with " (on)" or " (off)", a description after a
/// dash. What only groups others is left out.
std::vector<std::string> spokenLines(const std::vector<Read>& reading);

/// The name that tests give a role: "Button".
std::string nameOf(QAccessible::Role role);

/// Does `action`, one of QAccessibleActionInterface's names, on `item`; false if it knows no such action.
bool doAction(QQuickItem* item, const QString& action);

} // namespace vorn::testing
