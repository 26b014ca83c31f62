#pragma once

namespace vorn {

/// Makes this process a regular application, with an icon in the Dock and a menu bar, even when started from a
/// terminal. Does nothing outside macOS. Threads: the main one.
void becomeRegularApplication();

/// Brings the application's windows to the front. Does nothing on Linux, where windows are raised one by one.
void activateApplication();

/// Bounces the Dock icon once to ask for attention, unless the application is in front. Returns whether there is a
/// Dock: elsewhere each window asks for attention itself.
bool bounceDockIcon();

} // namespace vorn
