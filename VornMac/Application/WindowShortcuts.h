#pragma once

#include <functional>

#include <QWindow>

namespace vorn {

/// Gives `window` the keys that windows have on its desktop: to close it, to minimise it, and to quit, which calls
/// `quit`. macOS takes those to quit and to hide from the application's menu, and they work here all the same.
void addWindowShortcuts(QWindow& window, const std::function<void()>& quit);

} // namespace vorn
