#pragma once

#include "tests/VornMac/Tour/Shot.h"

#include <functional>
#include <string>
#include <vector>

namespace vorn::testing {

/// One picture of the tour.
struct Picture {
    std::string name;                         ///< "1-link-showing"
    std::function<Themed(QSize window)> take; ///< in a window of this size, where it has none of its own
    double tolerance;                         ///< the share of its pixels that may differ from its reference
};

/// Every scene; moments of what moves; scenes in other windows, other sizes of text and under the user's hand; and
/// sheets of what is too small for a picture of its own.
std::vector<Picture> allPictures();

} // namespace vorn::testing
