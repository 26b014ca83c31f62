#include "VornMac/Text/KeychainText.h"

namespace vorn {

std::string keychainWaitText()
{
    return "Waiting for your keychain…";
}

std::string keychainRefusalText(const KeychainError& refusal)
{
    switch (refusal.status()) {
    case KeychainError::interactionNotAllowed:
    case KeychainError::userCanceled:
        return "Your keychain is still locked, so Vorn can't tell whether this Mac is linked.";
    default: return "Your keychain didn't let Vorn in, so it can't tell whether this Mac is linked.";
    }
}

} // namespace vorn
