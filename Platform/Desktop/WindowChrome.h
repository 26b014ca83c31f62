#pragma once

#include <cstdint>

namespace vorn {

/// Extends a window's content under its title bar, of which only the buttons remain. Does nothing where the desktop
/// draws the decorations. `nativeView` is `QWindow::winId`. Call it before the window is shown, or its content jumps.
/// Threads: the main one.
void hideTitleBar(std::uintptr_t nativeView);

} // namespace vorn
