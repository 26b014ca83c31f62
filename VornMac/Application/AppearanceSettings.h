#pragma once

#include "Platform/Base/UserDefaults.h"
#include "Platform/Desktop/MotionPreference.h"

#include <optional>

namespace vorn {

/// Tells the appearance what the user wants and Qt does not know: how much may move, and what the user defaults
/// override. Threads: the main one.
class AppearanceSettings {
public:
    /// Reads `defaults` once; what they leave open follows the system while this object lives.
    explicit AppearanceSettings(const UserDefaults& defaults);

private:
    std::optional<MotionWatch> watch_;
};

} // namespace vorn
