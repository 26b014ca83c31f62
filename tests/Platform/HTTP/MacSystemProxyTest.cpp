#include "Platform/HTTP/SystemProxy.h"

#include "tests/Platform/HTTP/MacNetwork.h"
#include "tests/support/apple/doubles/CFDoubles.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using testing::liveCFObjects;
using testing::MacNetwork;
using Proxies = std::vector<MacNetwork::Proxy>;

const std::string origin = "https://service.example/";

struct MacSystemProxy : ::testing::Test {
    MacNetwork& network = MacNetwork::current();
    std::size_t objectsBefore = liveCFObjects();

    MacSystemProxy() { network = {}; }
    ~MacSystemProxy() override { EXPECT_EQ(liveCFObjects(), objectsBefore) << "something leaks"; }

    static std::optional<std::string> found() { return SystemProxy::ofSystem()->proxyFor(origin); }
};

TEST_F(MacSystemProxy, IsTheFirstThatCanBeUsed)
{
    struct Case {
        const char* name;
        Proxies proxies;
        std::optional<std::string> expected;
    };
    for (const auto& [name, proxies, expected] : {
             Case{"none", Proxies{{.type = "None"}}, ""},
             Case{"one for http", Proxies{{.type = "HTTP", .host = "proxy", .port = 3128}}, "http://proxy:3128"},
             Case{"one for https", Proxies{{.type = "HTTPS", .host = "proxy", .port = 3128}}, "http://proxy:3128"},
             Case{"SOCKS", Proxies{{.type = "SOCKS", .host = "proxy", .port = 1080}}, "socks5h://proxy:1080"},
             Case{"IPv6", Proxies{{.type = "HTTP", .host = "fd00::1", .port = 8080}}, "http://[fd00::1]:8080"},
             Case{"an unknown type first", Proxies{{.type = "FTP", .host = "f", .port = 21}, {.type = "None"}}, ""},
             Case{"one without a port first",
                  Proxies{{.type = "HTTP", .host = "proxy"}, {.type = "SOCKS", .host = "socks", .port = 1}},
                  "socks5h://socks:1"},
             Case{"nothing", Proxies{}, std::nullopt},
         }) {
        SCOPED_TRACE(name);
        network.proxies = proxies;
        EXPECT_EQ(found(), expected);
    }
}

TEST_F(MacSystemProxy, IsWhatTheScriptOfTheNetworkFinds)
{
    network.proxies = {{.type = "AutoConfigurationURL", .script = "http://wpad/proxy.pac"}};
    network.foundByScript = Proxies{{.type = "HTTP", .host = "proxy", .port = 3128}, {.type = "None"}};
    EXPECT_EQ(found(), "http://proxy:3128");
    EXPECT_THAT(network.asked, ElementsAre(origin, "http://wpad/proxy.pac for " + origin));
}

TEST_F(MacSystemProxy, IsWhatTheScriptInTheSettingsFinds)
{
    network.proxies = {{.type = "JavaScript", .script = "function FindProxyForURL() {}"}};
    network.foundByScript = Proxies{{.type = "None"}};
    EXPECT_EQ(found(), "");
    EXPECT_THAT(network.asked, ElementsAre(origin, "function FindProxyForURL() {} for " + origin));
}

TEST_F(MacSystemProxy, IsTheNextWhereTheScriptFails)
{
    network.proxies = {{.type = "AutoConfigurationURL", .script = "http://wpad/proxy.pac"},
                       {.type = "HTTP", .host = "proxy", .port = 3128}};
    EXPECT_EQ(found(), "http://proxy:3128");
}

TEST_F(MacSystemProxy, IsNotLookedForByAScriptOfAScript)
{
    network.proxies = {{.type = "AutoConfigurationURL", .script = "http://wpad/proxy.pac"}};
    network.foundByScript = network.proxies;
    EXPECT_EQ(found(), std::nullopt);
    EXPECT_EQ(network.asked.size(), 2U);
}

TEST_F(MacSystemProxy, IsUnknownWithoutSettings)
{
    network.hasSettings = false;
    EXPECT_EQ(found(), std::nullopt);
}

} // namespace
} // namespace vorn
