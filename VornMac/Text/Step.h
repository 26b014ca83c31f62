#pragma once

#include <array>
#include <cstddef>

namespace vorn {

/// The screens, in their order.
enum class Step { link, consent, access, find, upload, done };

/// A name for each step: "link" is for programs, and `LinkScreen.qml` its screen.
inline constexpr std::array stepNames{"link", "consent", "access", "find", "upload", "done"};
static_assert(stepNames.size() == static_cast<std::size_t>(Step::done) + 1);

constexpr const char* nameOf(Step step)
{
    return stepNames.at(static_cast<std::size_t>(step));
}

} // namespace vorn
