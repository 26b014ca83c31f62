#pragma once

#include "Platform/Keychain/KeychainError.h"

#include <string>

/// What the user hears of the keychain, in which the session is kept. Threads: any.
namespace vorn {

/// While it is waited for.
std::string keychainWaitText();

/// After it refused to say whether this Mac is linked: which of the user's own refusals, or the system's, that was.
std::string keychainRefusalText(const KeychainError& refusal);

} // namespace vorn
