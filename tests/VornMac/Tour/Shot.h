#pragma once

#include "tests/VornMac/Window/HandDrivenAnimations.h"
#include "tests/VornMac/Window/WindowFixture.h"

#include <array>
#include <chrono>
#include <functional>
#include <utility>

#include <QImage>
#include <QSize>

namespace vorn::testing {

constexpr std::array themes{std::pair(Appearance::Theme::light, "light"), std::pair(Appearance::Theme::dark, "dark")};

/// One picture in each of the `themes`, in their order.
using Themed = std::array<QImage, themes.size()>;

/// What stands before the camera, and when it is taken.
struct Shot {
    std::function<void(WindowFixture&)> play;
    std::function<void(WindowFixture&)> pose = {}; ///< what the user does then, in the window at its size
    QSize size = {};                               ///< of the window
    double textScale = 1;
    std::chrono::milliseconds moment = {}; ///< of the motion that `play` begins; none: everything has come to rest
};

/// A window that shows a shot, and stands still.
class Stage {
public:
    explicit Stage(const Shot& shot);
    ~Stage();
    Stage(Stage&&) = delete;

    WindowFixture& window() { return window_; }
    /// As it stands.
    Themed picture();
    /// Lets what the user has begun come to its end.
    void rest() { animations_.pass(1000); }

private:
    HandDrivenAnimations animations_;
    WindowFixture window_;
    bool moves_;
};

} // namespace vorn::testing
