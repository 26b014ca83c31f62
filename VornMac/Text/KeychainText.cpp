#include "VornMac/Text/KeychainText.h"

#include "VornMac/Text/CommonText.h"

namespace vorn {
namespace {

/// Distinguishes a keychain that stayed locked from one that refused access.
const char* refusalText(const KeychainError& refusal)
{
    switch (refusal.status()) {
    case KeychainError::interactionNotAllowed:
    case KeychainError::userCanceled:
        return "Your keychain is still locked, so Vorn can't tell whether this Mac is linked.";
    default: return "Your keychain didn't let Vorn in, so it can't tell whether this Mac is linked.";
    }
}

} // namespace

ScreenText keychainText(const RestorePhase& phase, const std::optional<KeychainError>& refusal)
{
    if (std::holds_alternative<phase::Waiting>(phase)) return {.status = {Tone::waiting, "Waiting for your keychain…"}};
    if (std::holds_alternative<phase::Refused>(phase) && refusal)
        return {.status = {Tone::warning, refusalText(*refusal)}, .retry = tryAgain, .primary = "Link this Mac again"};
    return {};
}

} // namespace vorn
