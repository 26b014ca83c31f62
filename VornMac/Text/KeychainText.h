#pragma once

#include "Platform/Keychain/KeychainError.h"
#include "VornMac/Text/Phases.h"
#include "VornMac/Text/ScreenText.h"

#include <optional>

/// Texts about the keychain, in which the session is kept. Threads: any.
namespace vorn {

/// Replaces the screens until the stored session is read. `refusal` is the keychain's error, if it refused.
ScreenText keychainText(const RestorePhase& phase, const std::optional<KeychainError>& refusal);

} // namespace vorn
