#include "tests/VornMacCore/Client/ScriptedKeychain.h"

namespace vorn::testing {
namespace {

std::string nameOf(const KeychainItem& item)
{
    return item.service + "/" + item.account;
}

} // namespace

std::optional<std::string> ScriptedKeychain::read(const KeychainItem& item)
{
    calls_.push_back("read " + nameOf(item));
    if (readError) throw KeychainError(*readError);
    return secret;
}

void ScriptedKeychain::add(const KeychainItem& item, std::string_view bytes, const std::string& label)
{
    calls_.push_back("add " + nameOf(item) + " as \"" + label + "\"");
    if (addError) throw KeychainError(*addError);
    if (secret) throw KeychainError(KeychainError::duplicateItem);
    secret = std::string(bytes);
}

std::optional<std::string> ScriptedKeychain::removeIf(const KeychainItem& item,
                                                      std::function<bool(std::string_view)> matches)
{
    calls_.push_back("remove what matches " + nameOf(item));
    if (readError) throw KeychainError(*readError);
    if (secret && matches(*secret) && !keepsWhatIsRemoved) secret.reset();
    return secret;
}

bool ScriptedKeychain::remove(const KeychainItem& item) noexcept
{
    calls_.push_back("remove " + nameOf(item));
    if (!keepsWhatIsRemoved) secret.reset();
    return !keepsWhatIsRemoved;
}

} // namespace vorn::testing
