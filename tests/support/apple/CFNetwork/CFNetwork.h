#pragma once

// Stand-in for the parts of CFNetwork that the sources for macOS call.

#include <CoreFoundation/CoreFoundation.h>

extern "C" {

extern const CFStringRef kCFProxyTypeKey;
extern const CFStringRef kCFProxyHostNameKey;
extern const CFStringRef kCFProxyPortNumberKey;
extern const CFStringRef kCFProxyAutoConfigurationURLKey;
extern const CFStringRef kCFProxyAutoConfigurationJavaScriptKey;
extern const CFStringRef kCFProxyTypeNone;
extern const CFStringRef kCFProxyTypeHTTP;
extern const CFStringRef kCFProxyTypeHTTPS;
extern const CFStringRef kCFProxyTypeSOCKS;
extern const CFStringRef kCFProxyTypeAutoConfigurationURL;
extern const CFStringRef kCFProxyTypeAutoConfigurationJavaScript;

CFDictionaryRef CFNetworkCopySystemProxySettings(void);
CFArrayRef CFNetworkCopyProxiesForURL(CFURLRef url, CFDictionaryRef proxySettings);

typedef void (*CFProxyAutoConfigurationResultCallback)(void* client, CFArrayRef proxyList, CFErrorRef error);
CFRunLoopSourceRef CFNetworkExecuteProxyAutoConfigurationURL(CFURLRef proxyAutoConfigURL, CFURLRef targetURL,
                                                             CFProxyAutoConfigurationResultCallback cb,
                                                             CFStreamClientContext* clientContext);
CFRunLoopSourceRef CFNetworkExecuteProxyAutoConfigurationScript(CFStringRef proxyAutoConfigurationScript,
                                                                CFURLRef targetURL,
                                                                CFProxyAutoConfigurationResultCallback cb,
                                                                CFStreamClientContext* clientContext);

} // extern "C"
