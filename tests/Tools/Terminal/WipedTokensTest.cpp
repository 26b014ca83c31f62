#include "Platform/Async/BackgroundPool.h"
#include "Platform/Async/MainContext.h"
#include "Platform/Base/Bytes.h"
#include "Platform/Base/UUID.h"
#include "VornMacCore/Client/APIConfiguration.h"
#include "VornMacCore/Client/KeychainTokenStore.h"
#include "VornMacCore/Client/RememberingTokenStore.h"
#include "VornMacCore/Client/VornAPI.h"
#include "VornMacCore/Wire/Application.h"
#include "tests/Tools/Terminal/ProcessMemory.h"
#include "tests/Tools/Terminal/TerminalFixture.h"

#include <vector>

#include <gtest/gtest.h>

namespace vorn::testing {
namespace {

/// The service as a program of its own, behind a proxy that speaks TLS.
class SecureSandbox {
public:
    explicit SecureSandbox(const TemporaryFolder& folder)
        : certificate_(makeCertificate(folder)),
          front_("/usr/bin/python3", {"-B", SECURE_FRONT, sandbox.url(), certificate_.string()})
    {
        waitUntil([this] { return front_.output().ends_with('\n'); }, "TLS: " + front_.errors());
    }
    ~SecureSandbox() { front_.terminate(); }
    SecureSandbox(SecureSandbox&&) = delete;

    std::string url() const { return front_.output().substr(0, front_.output().find('\n')); }
    std::string authority() const { return readFile(certificate_); }

    Sandbox sandbox{{"--fault", "quest=401x1"}};

private:
    static std::filesystem::path makeCertificate(const TemporaryFolder& folder)
    {
        const auto file = folder / "certificate.pem";
        Program openssl("/usr/bin/openssl",
                        {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-subj",
                         "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1", "-keyout", file.string(), "-out",
                         file.string() + ".certificate"});
        if (openssl.exitCode() != 0) throw std::runtime_error(openssl.errors());
        writeFile(file, readFile(file) + readFile(file.string() + ".certificate"));
        return file;
    }

    std::filesystem::path certificate_;
    Program front_;
};

/// The client as the programs assemble it, signed in.
struct SignedIn {
    explicit SignedIn(bool secure)
        : front(secure ? std::make_unique<SecureSandbox>(surroundings.folder) : nullptr),
          plain(secure ? nullptr : std::make_unique<Sandbox>(std::vector<std::string>{"--fault", "quest=401x1"})),
          api(APIConfiguration::resolve(std::nullopt, front ? front->url() : plain->url()),
              HTTPSession::make({.authorities = front ? front->authority() : ""}), tokens, &pool)
    {
        const Sandbox& sandbox = front ? front->sandbox : *plain;
        const DeviceLink link = main.run(api.createDeviceLink({"Mac", "macos", "1.0.0", "macOS 14.0"}));
        sandbox.approve(sandbox.scan(link.qrPayload));
        api.adopt(StoredSession(main.run(api.pollDeviceLink(link.linkId, link.pollSecret)).session.value()));
    }

    std::vector<HiddenText> hiddenTokens() const
    {
        const auto session = tokens->load();
        return {HiddenText(session.value().token), HiddenText(session.value().refreshToken)};
    }

    LinkedFixture surroundings;
    std::unique_ptr<SecureSandbox> front;
    std::unique_ptr<Sandbox> plain;
    BackgroundPool pool;
    MainContext main;
    std::shared_ptr<TokenStore> tokens = std::make_shared<RememberingTokenStore>(
        std::make_shared<KeychainTokenStore>(bundleIdentifier(), KeychainTokenStore::sessionAccount));
    VornAPI api;
};

class WipedTokens : public ::testing::TestWithParam<bool> {};

TEST_P(WipedTokens, AreNowhereInMemoryOnceRenewedAndSignedOut)
{
    SignedIn fix(GetParam());
    const auto first = fix.hiddenTokens();
    fix.main.run(fix.api.nimbrelState()); // refused at first, so that the pair of tokens is renewed
    const auto second = fix.hiddenTokens();
    for (const HiddenText& token : first) EXPECT_EQ(copiesInMemory(token), 0U);
    for (const HiddenText& token : second) EXPECT_GT(copiesInMemory(token), 0U); // the session is remembered
    fix.main.run(fix.api.logout());
    for (const HiddenText& token : second) EXPECT_EQ(copiesInMemory(token), 0U);
}

TEST(WipedBuffers, HoldNothingOnceTheyAreFreed)
{
    const HiddenText token(newUUID());
    {
        std::vector<ByteBuffer> buffers;
        for (const std::size_t size : {100U, 1'000U, 10'000U, 100'000U}) {
            ByteBuffer& buffer = buffers.emplace_back(size);
            for (std::size_t i = 0; i < token.size(); ++i)
                buffer[size - token.size() + i] = static_cast<std::byte>(token.at(i));
        }
        EXPECT_EQ(copiesInMemory(token), buffers.size());
    }
    EXPECT_EQ(copiesInMemory(token), 0U) << "the body of a request is such a buffer";
}

INSTANTIATE_TEST_SUITE_P(Of, WipedTokens, ::testing::Bool(),
                         [](const auto& info) { return info.param ? "AServiceBehindTLS" : "AServiceOfThisComputer"; });

} // namespace
} // namespace vorn::testing
