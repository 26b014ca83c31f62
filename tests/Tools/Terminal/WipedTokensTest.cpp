#include "Platform/Async/BackgroundPool.h"
#include "Platform/Async/MainContext.h"
#include "VornMacCore/Client/APIConfiguration.h"
#include "VornMacCore/Client/KeychainTokenStore.h"
#include "VornMacCore/Client/RememberingTokenStore.h"
#include "VornMacCore/Client/VornAPI.h"
#include "VornMacCore/Wire/Application.h"
#include "tests/Tools/Terminal/ProcessMemory.h"
#include "tests/Tools/Terminal/TerminalFixture.h"

#include <gtest/gtest.h>

namespace vorn::testing {
namespace {

/// The client as programs put it together, against the service as a program of its own.
struct SignedIn {
    LinkedFixture surroundings;
    Sandbox sandbox{{"--fault", "quest=401x1"}};
    BackgroundPool pool;
    MainContext main;
    std::shared_ptr<TokenStore> tokens = std::make_shared<RememberingTokenStore>(
        std::make_shared<KeychainTokenStore>(bundleIdentifier(), KeychainTokenStore::sessionAccount));
    VornAPI api{APIConfiguration::resolve(std::nullopt, sandbox.url()), HTTPSession::make(), tokens, &pool};

    SignedIn()
    {
        const DeviceLink link = main.run(api.createDeviceLink({"Mac", "macos", "1.0.0", "macOS 14.0"}));
        sandbox.approve(sandbox.scan(link.qrPayload));
        api.adopt(StoredSession(main.run(api.pollDeviceLink(link.linkId, link.pollSecret)).session.value()));
    }

    std::vector<HiddenText> hiddenTokens() const
    {
        const auto session = tokens->load();
        return {HiddenText(session.value().token), HiddenText(session.value().refreshToken)};
    }
};

TEST(WipedTokens, AreNowhereInMemoryOnceRenewedAndSignedOut)
{
    SignedIn fix;
    const auto first = fix.hiddenTokens();
    fix.main.run(fix.api.nimbrelState()); // refused at first, so that the pair is renewed
    const auto second = fix.hiddenTokens();
    for (const HiddenText& token : first) EXPECT_EQ(copiesInMemory(token), 0U);
    for (const HiddenText& token : second) EXPECT_GT(copiesInMemory(token), 0U); // the session is remembered
    fix.main.run(fix.api.logout());
    for (const HiddenText& token : second) EXPECT_EQ(copiesInMemory(token), 0U);
}

} // namespace
} // namespace vorn::testing
