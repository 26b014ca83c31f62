#pragma once

namespace vorn {

/// Makes this process a regular application, with an icon in the Dock and a menu bar, even when started from a
/// terminal. Does nothing outside macOS. Threads: the main one.
void becomeRegularApplication();

/// Brings the application's windows to the front. Does nothing on Linux, where each window is raised by itself.
void activateApplication();

/// Asks for attention once, with the icon in the Dock, unless the application is in front. Returns whether there is a
/// Dock: elsewhere each window asks for itself.
bool bounceDockIcon();

} // namespace vorn
