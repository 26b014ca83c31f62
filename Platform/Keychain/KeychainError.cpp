#include "Platform/Keychain/KeychainError.h"

#include <string_view>

namespace vorn {
namespace {

std::string_view meaningOf(std::int32_t status)
{
    switch (status) {
    case KeychainError::parameter: return "the request is invalid";
    case KeychainError::userCanceled: return "the user dismissed the dialog";
    case KeychainError::notAvailable: return "there is no keychain, or it does not answer";
    case KeychainError::authFailed: return "access was refused";
    case KeychainError::duplicateItem: return "the item already exists";
    case KeychainError::itemNotFound: return "there is no such item";
    case KeychainError::interactionNotAllowed: return "the keychain is locked";
    case KeychainError::decode: return "what was found is not a secret";
    case KeychainError::missingEntitlement: return "the program's signature lacks an entitlement";
    default: return {};
    }
}

std::string textOf(std::int32_t status)
{
    std::string text = "keychain error " + std::to_string(status);
    if (const std::string_view meaning = meaningOf(status); !meaning.empty()) text.append(" (").append(meaning) += ')';
    return text;
}

} // namespace

KeychainError::KeychainError(std::int32_t status) : status_(status), text_(textOf(status))
{
}

} // namespace vorn
