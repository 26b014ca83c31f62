#pragma once

#include "tests/VornMac/Window/Scenes.h"

namespace vorn::testing {

/// The find screen with chats that are hard to lay out.
std::vector<Scene> threadScenes();

} // namespace vorn::testing
