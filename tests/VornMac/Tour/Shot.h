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

/// A scene, and when and how its picture is taken.
struct Shot {
    std::function<void(WindowFixture&)> play;
    std::function<void(WindowFixture&)> pose = {}; ///< the user's actions, in the window at its size
    QSize size = {};                               ///< of the window
    double textScale = 1;
    std::chrono::milliseconds moment = {}; ///< of the animation that `play` begins; 0: when everything has come to rest
};

/// A window that shows a shot, at rest.
class Stage {
public:
    explicit Stage(const Shot& shot);
    ~Stage();
    Stage(Stage&&) = delete;

    WindowFixture& window() { return window_; }
    /// The window as it looks now.
    Themed picture();
    /// Lets animations run to their end.
    void rest() { animations_.pass(1000); }

private:
    HandDrivenAnimations animations_;
    WindowFixture window_;
    bool moves_;
};

} // namespace vorn::testing
