#include "tests/Platform/HTTP/MacNetwork.h"

#include "tests/support/apple/doubles/CFDoubles.h"

#include <map>

#include <CFNetwork/CFNetwork.h>
#include <gtest/gtest.h>

namespace {

using vorn::testing::CFDouble;
using vorn::testing::MacNetwork;
using Type = CFDouble::Type;

CFDouble constants[] = {
    CFDouble::constant(Type::string, "type"),       CFDouble::constant(Type::string, "host"),
    CFDouble::constant(Type::string, "port"),       CFDouble::constant(Type::string, "script's address"),
    CFDouble::constant(Type::string, "script"),     CFDouble::constant(Type::string, "None"),
    CFDouble::constant(Type::string, "HTTP"),       CFDouble::constant(Type::string, "HTTPS"),
    CFDouble::constant(Type::string, "SOCKS"),      CFDouble::constant(Type::string, "AutoConfigurationURL"),
    CFDouble::constant(Type::string, "JavaScript"), CFDouble::constant(Type::string, "default mode"),
};

/// The script that is running; there is at most one.
struct Script {
    CFProxyAutoConfigurationResultCallback done = nullptr;
    CFStreamClientContext context = {};
    bool isAdded = false;
} script;

CFTypeRef dictionaryOf(const MacNetwork::Proxy& proxy)
{
    const CFMutableDictionaryRef pairs =
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks);
    const auto set = [pairs](CFStringRef key, Type type, const std::string& bytes) {
        const CFTypeRef value = CFDouble::make(type, bytes);
        CFDictionarySetValue(pairs, key, value);
        CFRelease(value);
    };
    set(kCFProxyTypeKey, Type::string, proxy.type);
    if (!proxy.host.empty()) set(kCFProxyHostNameKey, Type::string, proxy.host);
    if (proxy.port) set(kCFProxyPortNumberKey, Type::number, std::to_string(*proxy.port));
    if (proxy.type == "AutoConfigurationURL") set(kCFProxyAutoConfigurationURLKey, Type::url, proxy.script);
    if (proxy.type == "JavaScript") set(kCFProxyAutoConfigurationJavaScriptKey, Type::string, proxy.script);
    return pairs;
}

CFArrayRef arrayOf(const std::vector<MacNetwork::Proxy>& proxies)
{
    std::vector<CFTypeRef> items;
    for (const MacNetwork::Proxy& each : proxies) items.push_back(dictionaryOf(each));
    return CFDouble::makeArray(std::move(items));
}

CFRunLoopSourceRef begin(CFTypeRef what, CFURLRef url, CFProxyAutoConfigurationResultCallback done,
                         const CFStreamClientContext* context)
{
    MacNetwork::current().asked.push_back(CFDouble::of(what).bytes + " for " + CFDouble::of(url).bytes);
    script = {.done = done, .context = *context, .isAdded = false};
    return reinterpret_cast<CFRunLoopSourceRef>(const_cast<void*>(CFDouble::make(Type::data, "source")));
}

} // namespace

vorn::testing::MacNetwork& vorn::testing::MacNetwork::current()
{
    static MacNetwork network;
    return network;
}

extern "C" {

const CFStringRef kCFProxyTypeKey = constants[0].asString();
const CFStringRef kCFProxyHostNameKey = constants[1].asString();
const CFStringRef kCFProxyPortNumberKey = constants[2].asString();
const CFStringRef kCFProxyAutoConfigurationURLKey = constants[3].asString();
const CFStringRef kCFProxyAutoConfigurationJavaScriptKey = constants[4].asString();
const CFStringRef kCFProxyTypeNone = constants[5].asString();
const CFStringRef kCFProxyTypeHTTP = constants[6].asString();
const CFStringRef kCFProxyTypeHTTPS = constants[7].asString();
const CFStringRef kCFProxyTypeSOCKS = constants[8].asString();
const CFStringRef kCFProxyTypeAutoConfigurationURL = constants[9].asString();
const CFStringRef kCFProxyTypeAutoConfigurationJavaScript = constants[10].asString();
const CFRunLoopMode kCFRunLoopDefaultMode = constants[11].asString();

CFDictionaryRef CFNetworkCopySystemProxySettings()
{
    return MacNetwork::current().hasSettings ? static_cast<CFDictionaryRef>(CFDouble::make(Type::dictionary, ""))
                                             : nullptr;
}

CFArrayRef CFNetworkCopyProxiesForURL(CFURLRef url, CFDictionaryRef proxySettings)
{
    EXPECT_NE(proxySettings, nullptr);
    MacNetwork::current().asked.push_back(CFDouble::of(url).bytes);
    return arrayOf(MacNetwork::current().proxies);
}

CFRunLoopSourceRef CFNetworkExecuteProxyAutoConfigurationURL(CFURLRef proxyAutoConfigURL, CFURLRef targetURL,
                                                             CFProxyAutoConfigurationResultCallback cb,
                                                             CFStreamClientContext* clientContext)
{
    return begin(proxyAutoConfigURL, targetURL, cb, clientContext);
}

CFRunLoopSourceRef CFNetworkExecuteProxyAutoConfigurationScript(CFStringRef proxyAutoConfigurationScript,
                                                                CFURLRef targetURL,
                                                                CFProxyAutoConfigurationResultCallback cb,
                                                                CFStreamClientContext* clientContext)
{
    return begin(proxyAutoConfigurationScript, targetURL, cb, clientContext);
}

CFRunLoopRef CFRunLoopGetCurrent()
{
    return reinterpret_cast<CFRunLoopRef>(&script);
}

void CFRunLoopAddSource(CFRunLoopRef /*loop*/, CFRunLoopSourceRef source, CFRunLoopMode mode)
{
    EXPECT_NE(source, nullptr);
    EXPECT_EQ(mode, kCFRunLoopDefaultMode);
    script.isAdded = true;
}

/// Ends the script, which owns the list that it passes to its callback.
CFRunLoopRunResult CFRunLoopRunInMode(CFRunLoopMode /*mode*/, CFTimeInterval /*seconds*/, Boolean /*returns*/)
{
    EXPECT_TRUE(script.isAdded);
    const auto& found = MacNetwork::current().foundByScript;
    const CFArrayRef list = found ? arrayOf(*found) : nullptr;
    script.done(script.context.info, list, nullptr);
    if (list != nullptr) CFRelease(list);
    return 4; // a source was handled
}

void CFRunLoopSourceInvalidate(CFRunLoopSourceRef /*source*/)
{
    script = {};
}

} // extern "C"
