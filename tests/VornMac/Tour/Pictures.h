#pragma once

#include "tests/VornMac/Tour/Shot.h"

#include <functional>
#include <string>
#include <vector>

namespace vorn::testing {

/// One picture of the tour.
struct Picture {
    std::string name;                         ///< "1-link-showing"
    std::function<Themed(QSize window)> take; ///< in a window of this size, unless the picture has its own
    double tolerance;                         ///< the share of pixels that may differ from the reference
};

/// Every scene; moments of animations; scenes in other windows, with other sizes of text and during user input; and
/// sheets of what is too small for a picture of its own.
std::vector<Picture> allPictures();

} // namespace vorn::testing
