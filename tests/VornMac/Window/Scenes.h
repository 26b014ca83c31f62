#pragma once

#include "tests/VornMac/Window/WindowFixture.h"

#include <functional>
#include <string>
#include <vector>

namespace vorn::testing {

/// One state of the window: a screen in a phase.
struct Scene {
    std::string name; ///< the name of its picture: "1-link-showing"
    std::function<void(WindowFixture&)> play;
};

/// Every screen in every phase, in the order in which a user may meet them.
const std::vector<Scene>& allScenes();

/// Plays the scene `name`.
void play(WindowFixture& fix, const std::string& name);

} // namespace vorn::testing
