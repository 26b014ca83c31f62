#include "Platform/HTTP/SystemProxy.h"

#include "Platform/Base/macos/CFObject.h"

#include <chrono>
#include <utility>

#include <CFNetwork/CFNetwork.h>
#include <CoreFoundation/CoreFoundation.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr auto longestScript = 10s;

/// What a script found, as reported to its callback.
struct Found {
    CFOwned<CFArrayRef> proxies;
    bool isOver = false;

    static void take(void* found, CFArrayRef proxies, CFErrorRef /*error*/)
    {
        auto& self = *static_cast<Found*>(found);
        if (proxies != nullptr) self.proxies.reset(static_cast<CFArrayRef>(CFRetain(proxies)));
        self.isOver = true;
    }
};

/// Runs the script that was started as `source` on this thread's run loop, up to `longestScript`.
void runUntilOver(CFRunLoopSourceRef source, const Found& found)
{
    CFRunLoopAddSource(CFRunLoopGetCurrent(), source, kCFRunLoopDefaultMode);
    const auto end = std::chrono::steady_clock::now() + longestScript;
    while (!found.isOver && std::chrono::steady_clock::now() < end) CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0.25, 1);
    CFRunLoopSourceInvalidate(source); // after this, `Found::take` is not called
}

/// The proxies that the script of `proxy` (of a type that has one) names for `url`; null without an answer.
CFOwned<CFArrayRef> proxiesOfScript(CFDictionaryRef proxy, CFURLRef url)
{
    Found found;
    CFStreamClientContext context{0, &found, nullptr, nullptr, nullptr};
    CFOwned<CFRunLoopSourceRef> source;
    if (const void* const at = CFDictionaryGetValue(proxy, kCFProxyAutoConfigurationURLKey))
        source.reset(CFNetworkExecuteProxyAutoConfigurationURL(static_cast<CFURLRef>(at), url, &Found::take, &context));
    else if (const void* const text = CFDictionaryGetValue(proxy, kCFProxyAutoConfigurationJavaScriptKey))
        source.reset(
            CFNetworkExecuteProxyAutoConfigurationScript(static_cast<CFStringRef>(text), url, &Found::take, &context));
    if (source) runUntilOver(source.get(), found);
    return std::move(found.proxies);
}

std::optional<std::string> addressOf(CFDictionaryRef proxy, const char* scheme)
{
    const void* const host = CFDictionaryGetValue(proxy, kCFProxyHostNameKey);
    const void* const port = CFDictionaryGetValue(proxy, kCFProxyPortNumberKey);
    double number = 0;
    if (host == nullptr || port == nullptr) return std::nullopt;
    if (CFNumberGetValue(static_cast<CFNumberRef>(port), kCFNumberDoubleType, &number) == 0) return std::nullopt;
    const auto name = utf8(static_cast<CFStringRef>(host));
    if (!name) return std::nullopt;
    const bool isIPv6 = name->find(':') != std::string::npos;
    return std::string(scheme) + "://" + (isIPv6 ? "[" + *name + "]" : *name) + ":" +
           std::to_string(static_cast<int>(number));
}

bool is(CFDictionaryRef proxy, CFStringRef type)
{
    const void* const own = CFDictionaryGetValue(proxy, kCFProxyTypeKey);
    return own != nullptr && CFEqual(own, type) != 0;
}

/// The first of `proxies` that libcurl can use. A script that names another script is not followed.
std::optional<std::string> firstOf(CFArrayRef proxies, CFURLRef url, bool mayAskScript)
{
    for (CFIndex index = 0; proxies != nullptr && index < CFArrayGetCount(proxies); ++index) {
        const auto* const proxy = static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(proxies, index));
        std::optional<std::string> found;
        if (is(proxy, kCFProxyTypeNone)) found = std::string();
        // The second is a proxy for https URLs, which is itself reached over http.
        if (is(proxy, kCFProxyTypeHTTP) || is(proxy, kCFProxyTypeHTTPS)) found = addressOf(proxy, "http");
        if (is(proxy, kCFProxyTypeSOCKS)) found = addressOf(proxy, "socks5h"); // which resolves the name
        const bool hasScript =
            is(proxy, kCFProxyTypeAutoConfigurationURL) || is(proxy, kCFProxyTypeAutoConfigurationJavaScript);
        if (hasScript && mayAskScript) found = firstOf(proxiesOfScript(proxy, url).get(), url, false);
        if (found) return found;
    }
    return std::nullopt;
}

class NetworkSettings final : public SystemProxy {
public:
    std::optional<std::string> proxyFor(const std::string& origin) override
    {
        const CFOwned<CFURLRef> url(CFURLCreateWithBytes(nullptr, reinterpret_cast<const UInt8*>(origin.data()),
                                                         static_cast<CFIndex>(origin.size()), kCFStringEncodingUTF8,
                                                         nullptr));
        const CFOwned<CFDictionaryRef> settings(CFNetworkCopySystemProxySettings());
        if (!url || !settings) return std::nullopt;
        const CFOwned<CFArrayRef> proxies(CFNetworkCopyProxiesForURL(url.get(), settings.get()));
        return firstOf(proxies.get(), url.get(), true);
    }
};

} // namespace

std::shared_ptr<SystemProxy> SystemProxy::ofSystem()
{
    return std::make_shared<NetworkSettings>();
}

} // namespace vorn
