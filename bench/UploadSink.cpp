// Receives uploads as fast as one core can and discards them: the limit for uploads. Plays the service's API as far as
// an upload needs it. Prints its base URL and runs until it is killed; GET /counts returns what has arrived since the
// last such request.

#include "Platform/Base/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <fmt/format.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace vorn::bench {
namespace {

constexpr std::int64_t firstURLs = 50; ///< part URLs that come with a new submission

std::string base; ///< "http://127.0.0.1:<port>"; written before the first connection
std::atomic<std::int64_t> connections = 0, parts = 0, partBytes = 0;

struct Request {
    std::string_view method, path;
    std::int64_t length = 0;
};

std::int64_t numberAfter(std::string_view text, std::string_view mark)
{
    const auto at = text.find(mark);
    std::int64_t number = 0;
    if (at != std::string_view::npos)
        std::from_chars(text.data() + at + mark.size(), text.data() + text.size(), number);
    return number;
}

std::string answer(std::string_view headers, std::string_view body)
{
    return fmt::format("HTTP/1.1 200 OK\r\n{}Content-Length: {}\r\n\r\n{}", headers, body.size(), body);
}

std::string urlsOf(std::int64_t first, std::int64_t count)
{
    std::string urls;
    for (std::int64_t part = first; part < first + count; ++part)
        urls += fmt::format(R"({}{{"partNumber":{},"url":"{}/parts/{}"}})", urls.empty() ? "" : ",", part, base, part);
    return urls;
}

std::string counts()
{
    return fmt::format(R"({{"connections":{},"parts":{},"bytes":{}}})", connections.exchange(0), parts.exchange(0),
                       partBytes.exchange(0));
}

std::string recordFor(const Request& request, std::string_view body)
{
    if (request.path == "/counts") return counts();
    if (request.path.ends_with("/nimbrel"))
        return R"({"quest":{"id":"q1","title":"Export","status":"available","rewardUsd":5},)"
               R"("handles":["+15550102030","nimbrel@example.com"],"maxBytes":1073741824})";
    if (request.path.ends_with("/submissions"))
        return fmt::format(
            R"({{"submissionId":"s1","questId":"q1","attempt":1,"assets":[{{"assetId":"a1","position":0,)"
            R"("uploadId":"u1","parts":[{}]}}],"expiresInSeconds":3600}})",
            urlsOf(1, std::min(numberAfter(body, "\"partCount\":"), firstURLs)));
    if (request.path.ends_with("/part-urls"))
        return fmt::format(R"({{"submissionId":"s1","assetId":"a1","parts":[{}],"expiresInSeconds":3600}})",
                           urlsOf(numberAfter(body, "\"fromPart\":"), numberAfter(body, "\"count\":")));
    return R"({"id":"s1","questId":"q1","status":"processing"})";
}

/// One connection from its first request to its last.
class Connection {
public:
    explicit Connection(FileDescriptor socket) : socket_(std::move(socket)), piece_(1024 * 1024) {}

    void serve()
    {
        while (const auto head = readHead()) {
            const Request request = parse(*head);
            if (request.method == "PUT") {
                if (!skip(request.length) || !send(answer("ETag: \"0123456789abcdef0123456789abcdef\"\r\n", "")))
                    return;
                ++parts;
                partBytes += request.length;
            } else {
                const auto body = readBody(request.length);
                if (!body || !send(answer("Content-Type: application/json\r\n", recordFor(request, *body)))) return;
            }
        }
    }

private:
    static Request parse(std::string_view head)
    {
        const auto method = head.substr(0, head.find(' '));
        const auto target = head.substr(method.size() + 1);
        return {method, target.substr(0, target.find(' ')), numberAfter(head, "\r\nContent-Length: ")};
    }

    std::optional<std::string> readHead()
    {
        while (true) {
            if (const auto end = received_.find("\r\n\r\n"); end != std::string::npos) {
                std::string head = received_.substr(0, end + 2);
                received_.erase(0, end + 4);
                return head;
            }
            const ssize_t count = recv(socket_.get(), piece_.data(), piece_.size(), 0);
            if (count <= 0) return std::nullopt;
            received_.append(piece_.data(), static_cast<std::size_t>(count));
        }
    }

    std::optional<std::string> readBody(std::int64_t length)
    {
        std::string body;
        while (std::ssize(body) + std::ssize(received_) < length) {
            const ssize_t count = recv(socket_.get(), piece_.data(), piece_.size(), 0);
            if (count <= 0) return std::nullopt;
            received_.append(piece_.data(), static_cast<std::size_t>(count));
        }
        body = received_.substr(0, static_cast<std::size_t>(length));
        received_.erase(0, body.size());
        return body;
    }

    bool skip(std::int64_t length)
    {
        const auto here = std::min(length, std::ssize(received_));
        received_.erase(0, static_cast<std::size_t>(here));
        length -= here;
        while (length > 0) {
            const auto wanted = std::min(static_cast<std::size_t>(length), piece_.size());
            const ssize_t count = recv(socket_.get(), piece_.data(), wanted, 0);
            if (count <= 0) return false;
            length -= count;
        }
        return true;
    }

    bool send(std::string_view bytes)
    {
        return ::send(socket_.get(), bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size());
    }

    FileDescriptor socket_;
    std::vector<char> piece_;
    std::string received_; ///< not parsed yet
};

int run()
{
    std::signal(SIGPIPE, SIG_IGN); // a client that disconnects ends its connection, not the sink
    const FileDescriptor listener(socket(AF_INET, SOCK_STREAM, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener.get(), generic, size) != 0 || listen(listener.get(), 16) != 0 ||
        getsockname(listener.get(), generic, &size) != 0) {
        std::perror("bench-sink");
        return 1;
    }
    base = fmt::format("http://127.0.0.1:{}", ntohs(address.sin_port));
    fmt::print("{}\n", base);
    std::fflush(stdout);
    while (true) {
        FileDescriptor socket(accept(listener.get(), nullptr, nullptr));
        if (!socket) continue;
        const int yes = 1;
        setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
        ++connections;
        std::thread([held = std::move(socket)]() mutable { Connection(std::move(held)).serve(); }).detach();
    }
}

} // namespace
} // namespace vorn::bench

int main()
{
    return vorn::bench::run();
}
