#pragma once

#include "Platform/Keychain/KeychainError.h"
#include "VornMac/Text/Phases.h"
#include "VornMac/Text/ScreenText.h"

#include <optional>

/// Texts about the keychain, in which the session is kept. Threads: any.
namespace vorn {

/// Shown instead of a screen until the stored session has been read. `refusal` is the keychain's error, if it refused.
ScreenText keychainText(const RestorePhase& phase, const std::optional<KeychainError>& refusal);

} // namespace vorn
