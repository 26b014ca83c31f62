#include "Platform/HTTP/SocketTraffic.h"
#include "tests/Platform/HTTP/SilenceFixture.h"

namespace vorn {

// Simulates a system that does not count a connection's bytes.

SocketTraffic trafficOf(int /*socket*/) noexcept
{
    return {};
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

} // namespace
} // namespace testing
} // namespace vorn
