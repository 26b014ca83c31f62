#include "Tools/Terminal/SessionKeychain.h"

namespace vorn {
namespace {

std::string sentenceOf(const KeychainError& error)
{
    switch (error.status()) {
    case KeychainError::notAvailable: return "There is no keychain here, or it does not answer.";
    case KeychainError::interactionNotAllowed: return "The keychain is locked.";
    case KeychainError::userCanceled: return "The keychain was not unlocked.";
    default: return "The keychain denies Vorn access.";
    }
}

} // namespace

bool SessionKeychain::holdsSession(const std::string& consequence) const
{
    try {
        return keychain_->read(item_).has_value();
    } catch (const KeychainError& error) {
        throw failure(error, consequence);
    }
}

CommandFailure SessionKeychain::failure(const KeychainError& error, const std::string& consequence)
{
    return {TerminalStatus::keychain, sentenceOf(error) + " " + consequence};
}

} // namespace vorn
