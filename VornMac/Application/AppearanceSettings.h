#pragma once

#include "Platform/Base/UserDefaults.h"
#include "Platform/Desktop/MotionPreference.h"

#include <optional>

namespace vorn {

/// Tells the appearance what Qt does not know: whether the user wants motion, and what the user defaults override.
/// Threads: the main one.
class AppearanceSettings {
public:
    /// Reads `defaults` once. What they leave open follows the system while this object lives.
    explicit AppearanceSettings(const UserDefaults& defaults);

private:
    std::optional<MotionWatch> watch_;
};

} // namespace vorn
