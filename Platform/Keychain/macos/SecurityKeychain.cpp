#include "Platform/Keychain/macos/SecurityKeychain.h"

#include "Platform/Base/macos/CFObject.h"

#include <new>

#include <Security/Security.h>

namespace vorn {
namespace {

/// A query dictionary. Refuses null objects, which it cannot hold.
class Query {
public:
    explicit Query(const KeychainItem& item)
        : pairs_(
              CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks))
    {
        if (!pairs_) throw std::bad_alloc();
        set(kSecClass, kSecClassGenericPassword);
        set(kSecAttrService, text(item.service).get());
        set(kSecAttrAccount, text(item.account).get());
    }

    void set(CFStringRef key, CFTypeRef value) { CFDictionarySetValue(pairs_.get(), key, value); }

    CFDictionaryRef get() const { return pairs_.get(); }

    static CFOwned<CFStringRef> text(const std::string& utf8)
    {
        auto string = cfString(utf8);
        if (!string) throw KeychainError(KeychainError::parameter);
        return string;
    }

private:
    CFOwned<CFMutableDictionaryRef> pairs_;
};

CFOwned<CFDataRef> dataOf(std::string_view bytes)
{
    CFOwned<CFDataRef> data(
        CFDataCreate(nullptr, reinterpret_cast<const UInt8*>(bytes.data()), static_cast<CFIndex>(bytes.size())));
    if (!data) throw std::bad_alloc();
    return data;
}

} // namespace

std::shared_ptr<Keychain> Keychain::system()
{
    return std::make_shared<SecurityKeychain>();
}

bool Keychain::keepsProgramsApart() noexcept
{
    return true;
}

std::optional<std::string> SecurityKeychain::read(const KeychainItem& item)
{
    Query query(item);
    query.set(kSecReturnData, kCFBooleanTrue);
    query.set(kSecMatchLimit, kSecMatchLimitOne);
    CFTypeRef found = nullptr;
    const OSStatus status = SecItemCopyMatching(query.get(), &found);
    const CFOwned<CFTypeRef> result(found);
    if (status == errSecItemNotFound) return std::nullopt;
    if (status != errSecSuccess) throw KeychainError(status);
    if (!result || CFGetTypeID(found) != CFDataGetTypeID()) throw KeychainError(KeychainError::decode);
    auto data = static_cast<CFDataRef>(found);
    const auto size = static_cast<std::size_t>(CFDataGetLength(data));
    // The pointer of an empty buffer may be null.
    return size == 0 ? std::string() : std::string(reinterpret_cast<const char*>(CFDataGetBytePtr(data)), size);
}

void SecurityKeychain::add(const KeychainItem& item, std::string_view bytes, const std::string& label)
{
    Query query(item);
    query.set(kSecValueData, dataOf(bytes).get());
    query.set(kSecAttrAccessible, kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly);
    query.set(kSecAttrLabel, Query::text(label).get());
    const OSStatus status = SecItemAdd(query.get(), nullptr);
    if (status != errSecSuccess) throw KeychainError(status);
}

bool SecurityKeychain::remove(const KeychainItem& item) noexcept
{
    try {
        const OSStatus status = SecItemDelete(Query(item).get());
        return status == errSecSuccess || status == errSecItemNotFound;
    } catch (const std::exception&) { // invalid names, or out of memory
        return false;
    }
}

} // namespace vorn
