#pragma once

#include <array>

namespace vorn {

/// The screens, in their order.
enum class Step { link, consent, access, find, upload, done };

inline constexpr std::array allSteps{Step::link, Step::consent, Step::access, Step::find, Step::upload, Step::done};

} // namespace vorn
