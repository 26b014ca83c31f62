#pragma once

#include <cstdint>

namespace vorn {

/// Lets a window's content reach to its top edge: of the title bar only the buttons are left. Does nothing where the
/// desktop draws the decorations, which stay. `nativeView` is the window's view by its number, as `QWindow::winId`
/// gives it. Call it before the window is shown: later, its content would jump. Threads: the main one.
void hideTitleBar(std::uintptr_t nativeView);

} // namespace vorn
