#pragma once

#include "tests/VornMac/Tour/Shot.h"

namespace vorn::testing {

/// Every kind of control in a row: at rest, hovered, pressed, and focused by keyboard.
Themed controlSheet(QSize window);

/// The form of the done screen for every reason of a rejection that the service names, and for an unknown one.
Themed rejectionSheet(QSize window);

/// The notification of each outcome, laid out as desktops do.
Themed noticeSheet(QSize window);

} // namespace vorn::testing
