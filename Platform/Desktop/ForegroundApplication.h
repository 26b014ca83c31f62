#pragma once

namespace vorn {

/// Makes this process a regular application, with an icon in the Dock and a menu bar, also when it was started from a
/// terminal. Only macOS tells such processes apart. Threads: the main one.
void becomeRegularApplication();

/// Brings the application's windows before those of others. On Linux the window itself is asked instead.
void activateApplication();

} // namespace vorn
