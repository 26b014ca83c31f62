#include "Platform/HTTP/CurlFailure.h"

#include "Platform/HTTP/NetworkState.h"
#include "tests/Platform/HTTP/SessionFixture.h"

#include <cerrno>
#include <set>
#include <vector>

namespace vorn::testing {
namespace {

using ::testing::Optional;
using Code = URLError::Code;

struct FailureCase {
    const char* name;
    CURLcode result;
    int systemError;
    bool onNetwork;
    Code code;
};

TEST(CurlFailure, IsNamedAsThePlatformDoes)
{
    const std::vector<FailureCase> cases{
        {"refused", CURLE_COULDNT_CONNECT, ECONNREFUSED, true, Code::cannotConnectToHost},
        {"no route to the network", CURLE_COULDNT_CONNECT, ENETUNREACH, true, Code::notConnectedToInternet},
        {"interface down", CURLE_COULDNT_CONNECT, ENETDOWN, true, Code::notConnectedToInternet},
        {"no address of our own", CURLE_COULDNT_CONNECT, EADDRNOTAVAIL, true, Code::notConnectedToInternet},
        {"no route to the host", CURLE_COULDNT_CONNECT, EHOSTUNREACH, true, Code::cannotConnectToHost},
        {"no answer to connecting", CURLE_COULDNT_CONNECT, ETIMEDOUT, true, Code::timedOut},
        {"no such name", CURLE_COULDNT_RESOLVE_HOST, 0, true, Code::cannotFindHost},
        {"no name without a network", CURLE_COULDNT_RESOLVE_HOST, 0, false, Code::notConnectedToInternet},
        {"no such proxy", CURLE_COULDNT_RESOLVE_PROXY, 0, true, Code::cannotFindHost},
        {"proxy that refuses", CURLE_PROXY, 0, true, Code::cannotConnectToHost},
        {"time-out", CURLE_OPERATION_TIMEDOUT, 0, true, Code::timedOut},
        {"no answer", CURLE_GOT_NOTHING, 0, true, Code::networkConnectionLost},
        {"half an answer", CURLE_PARTIAL_FILE, 0, true, Code::networkConnectionLost},
        {"broken pipe", CURLE_SEND_ERROR, EPIPE, true, Code::networkConnectionLost},
        {"reset", CURLE_RECV_ERROR, ECONNRESET, true, Code::networkConnectionLost},
        {"handshake", CURLE_SSL_CONNECT_ERROR, 0, true, Code::secureConnectionFailed},
        {"certificate", CURLE_PEER_FAILED_VERIFICATION, 0, true, Code::secureConnectionFailed},
        {"not HTTP", CURLE_UNSUPPORTED_PROTOCOL, 0, true, Code::badServerResponse},
        {"odd HTTP", CURLE_WEIRD_SERVER_REPLY, 0, true, Code::badServerResponse},
        {"no URL", CURLE_URL_MALFORMAT, 0, true, Code::badURL},
        {"anything else", CURLE_FUNCTION_NOT_FOUND, 0, true, Code::unknown},
    };
    for (const auto& [name, result, systemError, onNetwork, code] : cases) {
        EXPECT_EQ(failureOf(result, systemError, onNetwork), code) << name;
    }
}

TEST(URLErrorTest, SaysASentenceOfItsOwnForEachCode)
{
    std::set<std::string> sentences;
    for (int code = 0; code <= static_cast<int>(Code::requestBodyStreamExhausted); ++code) {
        sentences.insert(URLError(static_cast<Code>(code)).what());
    }
    EXPECT_EQ(sentences.size(), static_cast<std::size_t>(Code::requestBodyStreamExhausted) + 1);
    EXPECT_STREQ(URLError(Code::timedOut).what(), "The request timed out.");
    EXPECT_STREQ(URLError(Code::networkConnectionLost).what(), "The network connection was lost.");
}

class Network : public SessionFixture {};

TEST_F(Network, HasNoHostOfAReservedName)
{
    // Without a network, the request fails with another code.
    const Code expected = isOnNetwork() ? Code::cannotFindHost : Code::notConnectedToInternet;
    EXPECT_THAT(failureOf(request(Method::get, "http://nobody.invalid/")), Optional(expected));
}

TEST_F(Network, DoesNotReachTheBroadcastAddress)
{
    EXPECT_THAT(failureOf(request(Method::get, "http://255.255.255.255/")),
                Optional(::testing::AnyOf(Code::notConnectedToInternet, Code::cannotConnectToHost)));
}

} // namespace
} // namespace vorn::testing
