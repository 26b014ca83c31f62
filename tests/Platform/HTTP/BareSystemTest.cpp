#include "Platform/HTTP/SocketTraffic.h"
#include "Platform/HTTP/UnreadTLS.h"
#include "tests/Platform/HTTP/HeldBody.h"
#include "tests/Platform/HTTP/SilenceFixture.h"

#include <future>

namespace vorn {

// A system that helps with nothing: it does not say what a connection has moved, and its TLS cannot be called.

SocketTraffic trafficOf(int /*socket*/) noexcept
{
    return {};
}

std::optional<std::string> takeUnreadTLS(CURL* /*handle*/, int /*socket*/)
{
    return std::nullopt;
}

namespace testing {
namespace {

class BareSystem : public SilenceFixture {};

TEST_F(BareSystem, SeesAnAnswerThatTricklesIn)
{
    server.script(sendingSlowly("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\n", 5));
    EXPECT_EQ(send(limited(get())).body, "xxxxx");
}

TEST_F(BareSystem, SeesABodyThatIsReadSlowly)
{
    server.script(readingSlowly());
    EXPECT_EQ(send(limited(put(4 * part))).status, 201);
}

struct Authority {
    TestAuthority authority;
};

class SecureBareSystem : Authority, public SessionFixture {
protected:
    SecureBareSystem() : SessionFixture(authority.identityOf({}), {.authorities = authority.certificate()}) {}
};

TEST_F(SecureBareSystem, HearsARefusalBeforeItSendsMore)
{
    constexpr std::int64_t size = 8 * 1024 * 1024;
    std::promise<void> refused;
    server.script([&refused](Exchange& exchange) {
        exchange.readBody(size / 4);
        exchange.send("HTTP/1.1 403 Forbidden\r\nContent-Length: 7\r\n\r\nexpired");
        exchange.reset();
        refused.set_value();
    });
    const auto body = std::make_shared<const HeldBody>(size, size / 4, refused.get_future());
    EXPECT_EQ(send(request(Method::put, server.url(), body)).status, 403);
}

} // namespace
} // namespace testing
} // namespace vorn
