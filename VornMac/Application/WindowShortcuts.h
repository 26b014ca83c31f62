#pragma once

#include <functional>

#include <QWindow>

namespace vorn {

/// Adds the desktop's keys for closing, minimising and quitting, which calls `quit`. On macOS the menu bar has these
/// commands too; the keys work here as well.
void addWindowShortcuts(QWindow& window, const std::function<void()>& quit);

} // namespace vorn
