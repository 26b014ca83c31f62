#pragma once

#include <array>
#include <cstddef>

namespace vorn {

/// The screens, in their order.
enum class Step { link, consent, access, find, upload, done };

/// The name of each step, for programs and for finding its screen: that of "link" is `LinkScreen.qml`.
inline constexpr std::array stepNames{"link", "consent", "access", "find", "upload", "done"};
static_assert(stepNames.size() == static_cast<std::size_t>(Step::done) + 1);

constexpr const char* nameOf(Step step)
{
    return stepNames.at(static_cast<std::size_t>(step));
}

} // namespace vorn
