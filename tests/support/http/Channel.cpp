#include "tests/support/http/Channel.h"

#include <cerrno>
#include <sys/socket.h>

#include <openssl/err.h>
#include <openssl/ssl.h>

namespace vorn::testing {
namespace {

using Step = Channel::Step;

class PlainChannel final : public Channel {
public:
    explicit PlainChannel(int socket) : socket_(socket) {}

    Step read(std::span<char> into) override
    {
        return stepOf(recv(socket_, into.data(), into.size(), 0), Step::Kind::waitsForInput);
    }
    Step write(std::string_view bytes) override
    {
        return stepOf(send(socket_, bytes.data(), bytes.size(), 0), Step::Kind::waitsForOutput);
    }
    void sayGoodbye() override {}

private:
    static Step stepOf(ssize_t count, Step::Kind otherwise)
    {
        if (count >= 0) return {.kind = Step::Kind::moved, .bytes = static_cast<std::size_t>(count)};
        const bool mayWait = errno == EAGAIN || errno == EINTR;
        return {.kind = mayWait ? otherwise : Step::Kind::gone};
    }

    int socket_;
};

class SecureChannel final : public Channel {
public:
    SecureChannel(int socket, const ServerIdentity& identity) : ssl_(SSL_new(identity.get()), &SSL_free)
    {
        SSL_set_fd(ssl_.get(), socket);
        SSL_set_accept_state(ssl_.get());
        SSL_set_mode(ssl_.get(), SSL_MODE_ENABLE_PARTIAL_WRITE | SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER);
    }

    Step read(std::span<char> into) override
    {
        ERR_clear_error();
        return stepOf(SSL_read(ssl_.get(), into.data(), static_cast<int>(into.size())));
    }
    Step write(std::string_view bytes) override
    {
        ERR_clear_error();
        return stepOf(SSL_write(ssl_.get(), bytes.data(), static_cast<int>(bytes.size())));
    }
    void sayGoodbye() override
    {
        if (SSL_is_init_finished(ssl_.get()) == 1) SSL_shutdown(ssl_.get());
        ERR_clear_error();
    }

private:
    Step stepOf(int count)
    {
        if (count > 0) return {.kind = Step::Kind::moved, .bytes = static_cast<std::size_t>(count)};
        switch (SSL_get_error(ssl_.get(), count)) {
        case SSL_ERROR_WANT_READ: return {.kind = Step::Kind::waitsForInput};
        case SSL_ERROR_WANT_WRITE: return {.kind = Step::Kind::waitsForOutput};
        case SSL_ERROR_ZERO_RETURN: return {.kind = Step::Kind::moved};
        default: return {.kind = Step::Kind::gone};
        }
    }

    std::unique_ptr<SSL, decltype(&SSL_free)> ssl_;
};

} // namespace

std::unique_ptr<Channel> Channel::plain(int socket)
{
    return std::make_unique<PlainChannel>(socket);
}

std::unique_ptr<Channel> Channel::secure(int socket, const ServerIdentity& identity)
{
    return std::make_unique<SecureChannel>(socket, identity);
}

} // namespace vorn::testing
