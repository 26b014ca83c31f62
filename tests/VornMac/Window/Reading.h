#pragma once

#include <string>
#include <vector>

#include <QAccessible>
#include <QQuickItem>
#include <QQuickWindow>

namespace vorn::testing {

/// One element that a screen reader reaches.
struct Read {
    QAccessible::Role role = QAccessible::NoRole;
    std::string name;
    std::string description;
    QAccessible::State state;
    std::vector<std::string> actions;
    int depth = 0;   ///< 0 directly below the window
    int parent = -1; ///< index in the reading, -1 for the window
    QQuickItem* item = nullptr;

    /// Whether it can be pressed or toggled. Qt also gives texts an action, to set the focus, which has no effect.
    bool isControl() const;
};

/// The visible elements that a screen reader finds in `window`, in its order: each before its children.
std::vector<Read> readingOf(QQuickWindow& window);

/// The lines that tests print and compare: "Button: Continue", a check box with " (on)" or " (off)", a description
/// after a dash. Skips mere groups.
std::vector<std::string> spokenLines(const std::vector<Read>& reading);

/// The name of a role in tests: "Button".
std::string nameOf(QAccessible::Role role);

/// Performs `action`, one of QAccessibleActionInterface's names, on `item`; false if it has no such action.
bool doAction(QQuickItem* item, const QString& action);

} // namespace vorn::testing
