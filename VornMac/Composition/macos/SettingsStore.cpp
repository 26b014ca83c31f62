#include "VornMac/Composition/SettingsStore.h"

#include "Platform/Base/macos/CFObject.h"

namespace vorn {
namespace {

/// The preferences of one domain, as the `defaults` tool reads and writes them.
class Preferences final : public SettingsStore {
public:
    explicit Preferences(const std::string& domain) : domain_(cfString(domain)) {}

    std::optional<Value> find(const std::string& key) const override
    {
        const auto name = cfString(key);
        if (!name || !domain_) return std::nullopt;
        CFPreferencesAppSynchronize(domain_.get()); // otherwise this process may see a value cached by an earlier read
        const CFOwned<CFPropertyListRef> value(CFPreferencesCopyAppValue(name.get(), domain_.get()));
        return value ? valueOf(value.get()) : std::nullopt;
    }

    std::optional<std::string> keep(const std::string& key, const Value& value) override
    {
        const auto name = cfString(key);
        if (!name || !domain_) return "the key is not text";
        if (const auto* text = std::get_if<std::string>(&value)) {
            const auto written = cfString(*text);
            if (!written) return "the value is not text"; // null would remove the key
            CFPreferencesSetAppValue(name.get(), written.get(), domain_.get());
        } else {
            CFPreferencesSetAppValue(name.get(), std::get<bool>(value) ? kCFBooleanTrue : kCFBooleanFalse,
                                     domain_.get());
        }
        if (CFPreferencesAppSynchronize(domain_.get())) return std::nullopt;
        return "they cannot be written";
    }

private:
    static std::optional<Value> valueOf(CFPropertyListRef value)
    {
        const CFTypeID type = CFGetTypeID(value);
        if (type == CFStringGetTypeID()) return utf8(static_cast<CFStringRef>(value));
        if (type == CFBooleanGetTypeID()) return CFBooleanGetValue(static_cast<CFBooleanRef>(value)) != 0;
        if (type != CFNumberGetTypeID()) return std::nullopt;
        double number = 0;
        CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberDoubleType, &number);
        return number != 0;
    }

    CFOwned<CFStringRef> domain_;
};

} // namespace

/// Names the domain: in a program outside the bundle, `kCFPreferencesCurrentApplication` is a different one.
std::unique_ptr<SettingsStore> userSettings(const std::string& identifier)
{
    return std::make_unique<Preferences>(identifier);
}

} // namespace vorn
