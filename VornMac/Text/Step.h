#pragma once

#include <array>
#include <cstddef>

namespace vorn {

/// The screens, in their order.
enum class Step { link, consent, access, find, upload, done };

/// One for each step: "link" is what programs are told, and `LinkScreen.qml` what is shown.
inline constexpr std::array stepNames{"link", "consent", "access", "find", "upload", "done"};
static_assert(stepNames.size() == static_cast<std::size_t>(Step::done) + 1);

constexpr const char* nameOf(Step step)
{
    return stepNames.at(static_cast<std::size_t>(step));
}

} // namespace vorn
