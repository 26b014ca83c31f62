#include "Platform/Keychain/linux/SecretServiceKeychain.h"

#include "Platform/Base/Text.h"
#include "Platform/Base/linux/SessionBus.h"
#include "Platform/Keychain/linux/RunWithin.h"
#include "Platform/Keychain/linux/SecretServiceRequest.h"

#include <system_error>
#include <utility>

namespace vorn {
namespace {

/// Refuses invalid text: GLib would return from the call and never call back.
void requireText(const std::string& text)
{
    if (!text::isWellFormed(text) || text.find('\0') != std::string::npos)
        throw KeychainError(KeychainError::parameter);
}

void requireText(const KeychainItem& item)
{
    requireText(item.service);
    requireText(item.account);
}

} // namespace

std::optional<std::string> SecretServiceKeychain::perform(Steps steps, std::chrono::milliseconds patience) const
try {
    const std::string address = sessionBusAddress();
    if (address.empty()) throw KeychainError(KeychainError::notAvailable);
    const auto outcome = std::make_shared<SecretServiceRequest::Outcome>();
    const bool ended =
        runWithin(limit_ + patience, [outcome, address, steps = std::move(steps), limit = limit_, patience] {
            try {
                SecretServiceRequest request(*outcome, limit, patience);
                request.connect(address);
                outcome->bytes = steps(request);
            } catch (const KeychainError& error) {
                outcome->error = error;
            } catch (const std::exception&) { // out of memory: nothing else is thrown here
                outcome->error.emplace(KeychainError::notAvailable);
            }
        });
    if (!ended) throw KeychainError(outcome->lateStatus());
    if (const auto& error = outcome->error; error) throw KeychainError(*error);
    return std::move(outcome->bytes);
} catch (const std::system_error&) { // no thread could be started
    throw KeychainError(KeychainError::notAvailable);
}

std::shared_ptr<Keychain> Keychain::system()
{
    return std::make_shared<SecretServiceKeychain>();
}

bool Keychain::keepsProgramsApart() noexcept
{
    return false;
}

std::optional<std::string> SecretServiceKeychain::read(const KeychainItem& item)
{
    requireText(item);
    return perform([item](SecretServiceRequest& request) { return request.read(item); });
}

std::optional<std::string> SecretServiceKeychain::readPatiently(const KeychainItem& item)
{
    requireText(item);
    return perform([item](SecretServiceRequest& request) { return request.read(item); }, patience_);
}

void SecretServiceKeychain::add(const KeychainItem& item, std::string_view bytes, const std::string& label)
{
    requireText(item);
    requireText(label);
    perform([item, kept = std::string(bytes), label](SecretServiceRequest& request) {
        request.add(item, kept, label);
        return std::nullopt;
    });
}

void SecretServiceKeychain::replace(const KeychainItem& item, std::string_view bytes, const std::string& label)
{
    requireText(item);
    requireText(label);
    perform([item, kept = std::string(bytes), label](SecretServiceRequest& request) {
        request.remove(item);
        request.add(item, kept, label);
        return std::nullopt;
    });
}

std::optional<std::string> SecretServiceKeychain::removeIf(const KeychainItem& item,
                                                           std::function<bool(std::string_view)> matches)
{
    requireText(item);
    return perform([item, matches = std::move(matches)](SecretServiceRequest& request) {
        auto kept = request.read(item);
        if (!kept || !matches(*kept)) return kept;
        request.remove(item);
        return std::optional<std::string>();
    });
}

bool SecretServiceKeychain::remove(const KeychainItem& item) noexcept
{
    try {
        requireText(item);
        perform([item](SecretServiceRequest& request) {
            request.remove(item);
            return std::nullopt;
        });
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace vorn
