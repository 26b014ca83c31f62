#include "Platform/HTTP/OpenSockets.h"

#include "Platform/Base/FileDescriptor.h"

#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <vector>

#include <gtest/gtest.h>

namespace vorn {
namespace {

sockaddr_in loopback(int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

int portOf(int socket)
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

class OpenSocketsTest : public ::testing::Test {
protected:
    void TearDown() override
    {
        for (const int socket : opened) sockets.close(socket);
    }

    static FileDescriptor listener()
    {
        FileDescriptor result(socket(AF_INET, SOCK_STREAM, 0));
        if (!result) throw std::runtime_error("no socket");
        const sockaddr_in address = loopback(0);
        EXPECT_EQ(bind(result.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(result.get(), 4), 0);
        return result;
    }

    /// A socket of `sockets` that leads from `localPort` (any, if that is 0) to `peerPort`.
    int connected(int localPort, int peerPort)
    {
        const int result = sockets.open(AF_INET, SOCK_STREAM, 0);
        if (result < 0) throw std::runtime_error("no socket");
        opened.push_back(result);
        const int yes = 1;
        setsockopt(result, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        const sockaddr_in own = loopback(localPort);
        const sockaddr_in peer = loopback(peerPort);
        EXPECT_EQ(bind(result, reinterpret_cast<const sockaddr*>(&own), sizeof own), 0);
        EXPECT_EQ(connect(result, reinterpret_cast<const sockaddr*>(&peer), sizeof peer), 0);
        return result;
    }

    OpenSockets sockets;
    std::vector<int> opened;
};

TEST_F(OpenSocketsTest, AreToldApartByTheirPeerWhereTheyShareALocalPort)
{
    const FileDescriptor one = listener(), other = listener();
    const int toOne = connected(0, portOf(one.get()));
    const int port = portOf(toOne);
    const int toOther = connected(port, portOf(other.get()));
    ASSERT_EQ(portOf(toOther), port);
    EXPECT_EQ(sockets.find(port, "127.0.0.1", portOf(one.get())), toOne);
    EXPECT_EQ(sockets.find(port, "127.0.0.1", portOf(other.get())), toOther);
    EXPECT_EQ(sockets.find(port, "::ffff:127.0.0.1", portOf(other.get())), toOther);
}

TEST_F(OpenSocketsTest, AreNotFoundByAnotherPeerOrPort)
{
    const FileDescriptor server = listener();
    const int peerPort = portOf(server.get());
    const int port = portOf(connected(0, peerPort));
    EXPECT_EQ(sockets.find(port, "127.0.0.2", peerPort), -1);
    EXPECT_EQ(sockets.find(port, "127.0.0.1", port), -1);
    EXPECT_EQ(sockets.find(peerPort, "127.0.0.1", peerPort), -1);
    EXPECT_EQ(sockets.find(port, "not an address", peerPort), -1);
}

} // namespace
} // namespace vorn
