#include "Platform/HTTP/SocketRelay.h"

#include "Platform/HTTP/OpenSockets.h"

#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>

namespace vorn {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

/// A TCP connection; the tests put a relay between `client` and `server`.
class SocketRelayTest : public ::testing::Test {
protected:
    SocketRelayTest() : handlesPipes_(std::signal(SIGPIPE, SIG_IGN)) // as on the session's thread, which blocks it
    {
        const FileDescriptor listener(socket(AF_INET, SOCK_STREAM, 0));
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* const any = reinterpret_cast<sockaddr*>(&address);
        socklen_t size = sizeof address;
        if (bind(listener.get(), any, size) != 0 || listen(listener.get(), 1) != 0 ||
            getsockname(listener.get(), any, &size) != 0 || connect(client.get(), any, size) != 0)
            throw std::runtime_error("no connection");
        server = FileDescriptor(accept(listener.get(), nullptr, nullptr));
    }

    ~SocketRelayTest() override { std::signal(SIGPIPE, handlesPipes_); }

    static ssize_t write(const FileDescriptor& to, const std::string& bytes)
    {
        return send(to.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    }
    /// The bytes that can be read without waiting.
    static std::string readFrom(const FileDescriptor& socket)
    {
        std::string result(1 << 20, '\0');
        const auto count = recv(socket.get(), result.data(), result.size(), MSG_DONTWAIT);
        result.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        return result;
    }
    static bool hasEnded(const FileDescriptor& socket)
    {
        char byte = 0;
        return recv(socket.get(), &byte, 1, MSG_DONTWAIT) == 0;
    }
    static std::vector<curl_waitfd> awaitedBy(const SocketRelay& relay)
    {
        std::vector<curl_waitfd> result;
        relay.watch(result);
        return result;
    }

    FileDescriptor client{socket(AF_INET, SOCK_STREAM, 0)};
    FileDescriptor server{-1};

private:
    void (*handlesPipes_)(int);
};

TEST_F(SocketRelayTest, CarriesBytesBothWays)
{
    SocketRelay relay(client.get());
    EXPECT_EQ(write(client, "question"), 8);
    relay.move();
    EXPECT_EQ(readFrom(server), "question");
    EXPECT_EQ(write(server, "answer"), 6);
    relay.move();
    EXPECT_EQ(readFrom(client), "answer");
}

TEST_F(SocketRelayTest, CarriesMoreThanFitsAnywhereInOrder)
{
    SocketRelay relay(client.get());
    std::string sent, received;
    for (int piece = 0; received.size() < 8'000'000; ++piece) {
        if (sent.size() < 8'000'000) {
            const std::string bytes(100'000, static_cast<char>('a' + piece % 26));
            const auto count = write(client, bytes);
            if (count > 0) sent.append(bytes, 0, static_cast<std::size_t>(count));
        }
        relay.move();
        if (piece % 16 == 0) received += readFrom(server); // rarely, so that the relay fills up in between
    }
    relay.move();
    received += readFrom(server);
    EXPECT_TRUE(received == sent);
}

TEST_F(SocketRelayTest, DeliversWhatArrivedBeforeTheCutWhileTheClientStillWrites)
{
    SocketRelay relay(client.get());
    EXPECT_GT(write(client, std::string(200'000, 'x')), 0);
    EXPECT_EQ(write(server, "refused"), 7);
    server.reset(); // with bytes unread: a reset
    for (int time = 0; time < 100; ++time) {
        relay.move();
        const auto count = write(client, std::string(10'000, 'x'));
        EXPECT_TRUE(count > 0 || errno == EAGAIN) << "libcurl would give up";
    }
    EXPECT_EQ(readFrom(client), "refused");
    relay.move();
    EXPECT_LT(write(client, "more"), 0) << "libcurl would wait forever";
    EXPECT_THAT(awaitedBy(relay), IsEmpty()) << "a cut is reported all the time to who waits for anything";
}

TEST_F(SocketRelayTest, PassesOnThatTheServerHasEndedItsHalfAndSendsOn)
{
    SocketRelay relay(client.get());
    EXPECT_EQ(shutdown(server.get(), SHUT_WR), 0);
    relay.move();
    EXPECT_TRUE(hasEnded(client));
    EXPECT_EQ(write(client, "more"), 4);
    relay.move();
    EXPECT_EQ(readFrom(server), "more");
}

TEST_F(SocketRelayTest, WaitsForWhatCanComeAlone)
{
    SocketRelay relay(client.get());
    const auto awaited = awaitedBy(relay);
    ASSERT_THAT(awaited, SizeIs(2));
    for (const curl_waitfd& each : awaited) EXPECT_EQ(each.events, CURL_WAIT_POLLIN);
}

TEST_F(SocketRelayTest, LeavesTheConnectionAsItWasWithoutDescriptors)
{
#if defined(__has_feature)
#if __has_feature(undefined_behavior_sanitizer)
    GTEST_SKIP() << "the sanitizer needs descriptors to look at the type of an object";
#endif
#endif
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    rlimit none = before;
    none.rlim_cur = 3;
    setrlimit(RLIMIT_NOFILE, &none);
    EXPECT_THROW(SocketRelay relay(client.get()), std::system_error);
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(write(client, "question"), 8);
    EXPECT_EQ(readFrom(server), "question");
}

TEST_F(SocketRelayTest, IsPutBeforeAConnectionOnce)
{
    OpenSockets sockets;
    const int number = sockets.open(AF_INET, SOCK_STREAM, 0);
    ASSERT_EQ(dup2(client.get(), number), number);
    client.reset();
    sockaddr_in own{};
    socklen_t size = sizeof own;
    getpeername(server.get(), reinterpret_cast<sockaddr*>(&own), &size);
    const int port = ntohs(own.sin_port);
    getsockname(server.get(), reinterpret_cast<sockaddr*>(&own), &size);
    const int serverPort = ntohs(own.sin_port);

    ASSERT_EQ(sockets.find(port, "127.0.0.1", serverPort), number);
    sockets.putRelayBefore(number);
    const int connection = sockets.find(port, "127.0.0.1", serverPort);
    EXPECT_NE(connection, number);
    EXPECT_NE(connection, -1);
    sockets.putRelayBefore(connection);
    EXPECT_EQ(sockets.find(port, "127.0.0.1", serverPort), connection);
    EXPECT_THAT(sockets.awaitedByRelays(), SizeIs(2));

    EXPECT_EQ(send(number, "question", 8, 0), 8);
    sockets.moveRelays();
    EXPECT_EQ(readFrom(server), "question");
    sockets.close(number);
    EXPECT_TRUE(hasEnded(server));
    EXPECT_THAT(sockets.awaitedByRelays(), IsEmpty());
}

} // namespace
} // namespace vorn
