#pragma once

#include <functional>

#include <QWindow>

namespace vorn {

/// Adds the keys that windows have on this desktop: close, minimise and quit, which calls `quit`. On macOS the
/// application's menu has quit and hide too; they work here as well.
void addWindowShortcuts(QWindow& window, const std::function<void()>& quit);

} // namespace vorn
