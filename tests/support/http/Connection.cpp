#include "tests/support/http/Connection.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <sys/socket.h>

namespace vorn::testing {
namespace {

#ifdef POLLRDHUP
constexpr short hangUp = POLLRDHUP;
#else
constexpr short hangUp = 0; // macOS: part of POLLHUP
#endif

constexpr std::size_t longestHead = 64 * 1024;

[[noreturn]] void refuse(const std::string& what, std::string_view line)
{
    throw std::runtime_error(what + ": \"" + std::string(line.substr(0, 200)) + "\"");
}

bool isToken(std::string_view text)
{
    constexpr std::string_view others = "!#$%&'*+-.^_`|~";
    return !text.empty() && std::all_of(text.begin(), text.end(), [&](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) != 0 || others.find(c) != std::string_view::npos;
    });
}

bool isVisible(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c > 0x20 && c < 0x7F; });
}

} // namespace

Connection::Connection(FileDescriptor socket, const ServerIdentity& identity, std::size_t number, int stop,
                       Records& records)
    : socket_(std::move(socket)),
      channel_(identity ? Channel::secure(socket_.get(), identity) : Channel::plain(socket_.get())), stop_(stop),
      records_(records)
{
    request_.connection = number;
}

bool Connection::readHead()
{
    endRequest();
    while (true) {
        if (const auto end = buffer_.find("\r\n\r\n"); end != std::string::npos) {
            const std::string head = buffer_.substr(0, end + 2);
            buffer_.erase(0, end + 4);
            takeHead(head);
            return true;
        }
        if (buffer_.size() > longestHead) refuse("the head does not end", buffer_);
        if (!readMore()) {
            if (!buffer_.empty()) refuse("the head breaks off", buffer_);
            return false;
        }
    }
}

void Connection::takeHead(std::string_view head)
{
    const std::size_t connection = request_.connection;
    request_ = {};
    request_.connection = connection;
    bool first = true;
    while (!head.empty()) {
        const auto end = head.find("\r\n");
        const std::string_view line = head.substr(0, end);
        if (std::exchange(first, false)) {
            takeRequestLine(line);
        } else {
            takeHeader(line);
        }
        head.remove_prefix(end + 2);
    }
    bodyLeft_ = bodyLength();
    request_.complete = bodyLeft_ == 0;
    underWay_ = records_.begun(request_);
}

void Connection::takeRequestLine(std::string_view line)
{
    const auto afterMethod = line.find(' ');
    const auto beforeVersion = line.rfind(' ');
    if (afterMethod == std::string_view::npos || afterMethod == beforeVersion) refuse("no request line", line);
    request_.method = line.substr(0, afterMethod);
    request_.target = line.substr(afterMethod + 1, beforeVersion - afterMethod - 1);
    if (!isToken(request_.method) || !isVisible(request_.target)) refuse("no request line", line);
    if (line.substr(beforeVersion + 1) != "HTTP/1.1") refuse("not HTTP/1.1", line);
}

void Connection::takeHeader(std::string_view line)
{
    const auto colon = line.find(':');
    if (colon == std::string_view::npos || !isToken(line.substr(0, colon))) refuse("no header", line);
    std::string_view value = line.substr(colon + 1);
    if (!value.empty() && value.front() != ' ') refuse("no space after the colon", line);
    value.remove_prefix(value.empty() ? 0 : 1);
    request_.headers.emplace_back(line.substr(0, colon), value);
}

std::size_t Connection::bodyLength() const
{
    if (request_.header("Transfer-Encoding")) refuse("a body without a length", request_.target);
    if (!request_.header("Host")) refuse("no Host", request_.target);
    const auto text = request_.header("Content-Length");
    if (!text) return 0;
    std::size_t length = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), length);
    if (error != std::errc() || end != text->data() + text->size()) refuse("no length", *text);
    return length;
}

std::size_t Connection::readBody(std::size_t bytes)
{
    std::size_t taken = 0;
    while (taken < bytes && bodyLeft_ > 0) {
        if (buffer_.empty() && !readMore()) throw PeerGone();
        const std::size_t count = std::min({bytes - taken, bodyLeft_, buffer_.size()});
        if (records_.received(count)) request_.body.append(buffer_, 0, count);
        buffer_.erase(0, count);
        taken += count;
        bodyLeft_ -= count;
    }
    request_.complete = bodyLeft_ == 0;
    return taken;
}

bool Connection::readMore()
{
    std::array<char, 65536> piece; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by what is read
    while (true) {
        if (!socket_) throw PeerGone();
        const Channel::Step step = channel_->read(piece);
        if (waitAfter(step)) continue;
        buffer_.append(piece.data(), step.bytes);
        return step.bytes > 0;
    }
}

void Connection::send(std::string_view bytes)
{
    endRequest();
    while (!bytes.empty()) {
        waitFor(0);
        const Channel::Step step = channel_->write(bytes);
        if (!waitAfter(step)) bytes.remove_prefix(step.bytes);
    }
}

void Connection::endRequest()
{
    if (underWay_) records_.ended(*underWay_, request_);
    underWay_.reset();
}

/// Waits until the channel is ready to repeat `step`, and returns true; returns false if `step` is done.
bool Connection::waitAfter(const Channel::Step& step) const
{
    using Kind = Channel::Step::Kind;
    if (step.kind == Kind::gone) throw PeerGone();
    if (step.kind == Kind::moved) return false;
    waitFor(step.kind == Kind::waitsForInput ? POLLIN : POLLOUT);
    return true;
}

/// Without events, only checks whether to stop; throws `PeerGone` to do so.
void Connection::waitFor(short events) const
{
    if (!socket_) throw PeerGone();
    std::array<pollfd, 2> watched{{{socket_.get(), events, 0}, {stop_, POLLIN, 0}}};
    while (poll(watched.data(), watched.size(), events == 0 ? 0 : -1) < 0) {
    }
    if (watched[1].revents != 0) throw PeerGone();
}

void Connection::close()
{
    // Unread bytes of the client would turn the close into a reset, which may overtake the answer.
    if (!socket_) return;
    endRequest();
    finishSending();
    std::array<char, 65536> unread; // NOLINT(cppcoreguidelines-pro-type-member-init): recv fills it
    while (recv(socket_.get(), unread.data(), unread.size(), MSG_DONTWAIT) > 0) {
    }
    socket_.reset();
}

void Connection::reset()
{
    if (!socket_) return;
    endRequest(); // before the client can see the reset, and its test can ask what has arrived
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    setsockopt(socket_.get(), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    socket_.reset();
}

void Connection::finishSending()
{
    channel_->sayGoodbye();
    shutdown(socket_.get(), SHUT_WR);
}

void Connection::pause(std::chrono::milliseconds duration)
{
    pollfd watched{stop_, POLLIN, 0};
    if (poll(&watched, 1, static_cast<int>(duration.count())) > 0) throw PeerGone();
}

void Connection::stayUntilClosed()
{
    // A client that closes while its bytes are unread shows only as a hang-up.
    std::array<char, 1> byte{};
    while (true) {
        std::array<pollfd, 2> watched{{{socket_.get(), hangUp, 0}, {stop_, POLLIN, 0}}};
        poll(watched.data(), watched.size(), 10);
        if (watched[1].revents != 0) throw PeerGone();
        if ((watched[0].revents & (POLLHUP | POLLERR | hangUp)) != 0) break;
        if (recv(socket_.get(), byte.data(), byte.size(), MSG_PEEK | MSG_DONTWAIT) == 0) break;
    }
    socket_.reset();
}

} // namespace vorn::testing
