#pragma once

#include "tests/VornMac/Tour/Shot.h"

namespace vorn::testing {

/// Every kind of control, a row each: at rest, under the pointer, pressed, and with the keyboard's focus.
Themed controlSheet(QSize window);

/// The form of the done screen for every reason that the service gives for a rejection, and for one it may add.
Themed rejectionSheet(QSize window);

/// What a notification says of each outcome, set as desktops do.
Themed noticeSheet(QSize window);

} // namespace vorn::testing
